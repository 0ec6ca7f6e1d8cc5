#pragma once

#include <QWidget>

class BrandButton;
class DropZone;
class QLabel;

// What the window shows before a file is open: where to drop files, the button that opens
// the file dialog, and how much time the application has saved so far.
class WelcomeScreen : public QWidget {
    Q_OBJECT
public:
    explicit WelcomeScreen(QWidget* parent = nullptr);

    void setDropTargeted(bool targeted);
    bool isDropTargeted() const;
    // Reads the saved-time total again; it grows when a save finishes.
    void refreshSavedTime();

    BrandButton* pickButton() const { return m_pick; }
    QLabel* savedTimeLabel() const { return m_savedText; }
    bool showsSavedTime() const;

signals:
    void pickRequested();

protected:
    void showEvent(QShowEvent* event) override;

private:
    DropZone* m_zone;
    BrandButton* m_pick;
    QWidget* m_savedLine;
    QLabel* m_savedText;
};
