#pragma once

#include <QWidget>

class AppModel;
class ElidedLabel;
class QLabel;
class QPushButton;
class SymbolLabel;

// The open file's kind, name and length, and the button that opens another file.
class FileHeader : public QWidget {
    Q_OBJECT
public:
    explicit FileHeader(AppModel& model, QWidget* parent = nullptr);

    ElidedLabel* nameLabel() const { return m_name; }
    QLabel* durationLabel() const { return m_duration; }
    QPushButton* otherFileButton() const { return m_otherFile; }
    SymbolLabel* kindSymbol() const { return m_kind; }

signals:
    void pickRequested();

private:
    void refresh();

    AppModel& m_model;
    SymbolLabel* m_kind;
    ElidedLabel* m_name;
    QLabel* m_duration;
    QPushButton* m_otherFile;
};
