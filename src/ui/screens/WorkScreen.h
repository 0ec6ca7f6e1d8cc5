#pragma once

#include <QWidget>

class AppModel;
class FileHeader;
class PlayerSection;
class ResultSection;
class SettingsSection;

// The screen for one open file: header, preview with timeline, settings and the result.
class WorkScreen : public QWidget {
    Q_OBJECT
public:
    explicit WorkScreen(AppModel& model, QWidget* parent = nullptr);

    FileHeader* header() const { return m_header; }
    PlayerSection* player() const { return m_player; }
    SettingsSection* settings() const { return m_settings; }
    ResultSection* result() const { return m_result; }

signals:
    void pickRequested();
    void saveRequested();
    void cutListRequested();

private:
    FileHeader* m_header;
    PlayerSection* m_player;
    SettingsSection* m_settings;
    ResultSection* m_result;
};
