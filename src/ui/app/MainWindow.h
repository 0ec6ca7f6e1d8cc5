#pragma once

#include <QMainWindow>

class AppModel;
class BatchModel;
class ContentView;
class QAction;

// The application's one window: the content view under a menu bar, 640 wide, as tall as its
// content.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(AppModel& model, BatchModel& batch, QWidget* parent = nullptr);

    ContentView* content() const { return m_content; }
    QAction* saveAction() const { return m_save; }
    QAction* saveCutListAction() const { return m_saveCutList; }
    QAction* aboutAction() const { return m_about; }

signals:
    // Once, when the window first appears on screen.
    void firstShown();
    void aboutRequested();

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    // Quitting in the middle of writing a file asks first; quitting anyway stops the work,
    // which leaves no partial file behind.
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void addKeyboardShortcuts();
    void updateActions();
    void keepOnScreen();

    AppModel& m_model;
    BatchModel& m_batch;
    ContentView* m_content;
    QAction* m_open = nullptr;
    QAction* m_openFolder = nullptr;
    QAction* m_save = nullptr;
    QAction* m_saveCutList = nullptr;
    QAction* m_about = nullptr;
    bool m_shown = false;
};
