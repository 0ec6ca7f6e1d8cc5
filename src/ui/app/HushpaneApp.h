#pragma once

#include "PreviewPlayer.h"
#include "SingleInstance.h"

#include <QObject>
#include <QPointer>
#include <QUrl>
#include <memory>

class AboutDialog;
class AppModel;
class BatchModel;
class MainWindow;
class QApplication;

// The windowed application: the one document model and the one batch for the life of the
// process, the main window showing them, the About dialog, and files the desktop asks it
// to open.
class HushpaneApp : public QObject {
    Q_OBJECT
public:
    // The preview plays through `player`, or through Qt Multimedia when none is given.
    explicit HushpaneApp(std::unique_ptr<PreviewPlayer> player = {}, QObject* parent = nullptr);
    ~HushpaneApp() override;

    AppModel& model() const { return *m_model; }
    BatchModel& batch() const { return *m_batch; }
    MainWindow& window() const { return *m_window; }

    void show();
    // A file the desktop asks to open (the file manager, a second launch): it goes to the
    // document when it is a supported recording and no batch is listed or running.
    void handleOpenRequest(const QUrl& location);
    // What a second launch sent: its files to open and its batch location.
    void handleLaunchRequest(const LaunchRequest& request);
    void showAbout();
    AboutDialog* aboutDialog() const;

private:
    void onFirstShown();
    void centreWindow();

    std::unique_ptr<AppModel> m_model;
    std::unique_ptr<BatchModel> m_batch;
    std::unique_ptr<MainWindow> m_window;
    QPointer<AboutDialog> m_about;
};

// True when a window can be shown: a display, or a Qt platform chosen explicitly.
bool windowSystemAvailable();
// Runs the windowed application until the user quits; `request` holds the paths given on
// the command line besides the flags. A second launch hands them to the first and ends.
int runApplication(QApplication& app, const LaunchRequest& request);
