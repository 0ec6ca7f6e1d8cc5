#pragma once

#include <QList>
#include <QUrl>
#include <QWidget>
#include <memory>

class AppModel;
class BatchModel;
class BatchView;
class FilePanels;
class QPushButton;
class WelcomeScreen;
class WorkScreen;

// The one view of the main window: the batch list, the welcome screen or the work screen for
// one file, whichever fits the models. Files dropped on it or picked in the open dialog go to
// the document model (one file) or the batch (several files or a folder).
class ContentView : public QWidget {
    Q_OBJECT
public:
    enum class Screen { welcome, work, batch };

    static constexpr int contentWidth = 640;
    static constexpr int outerPadding = 20;

    ContentView(AppModel& model, BatchModel& batch, QWidget* parent = nullptr);
    ~ContentView() override;

    Screen currentScreen() const;
    WelcomeScreen* welcomeScreen() const { return m_welcome; }
    WorkScreen* workScreen() const { return m_work; }
    BatchView* batchView() const { return m_batchView; }
    // The dialogs used from now on; the view owns them.
    void setFilePanels(std::unique_ptr<FilePanels> panels);

    // Routes locations: one supported file to the document, anything else to the batch.
    void accept(const QList<QUrl>& locations);
    void pickFile();
    void pickFolder();
    // Asks where to write the new file, then writes it.
    void saveAndTidle();
    // Asks for a base name, then writes the kept spans as name.edl and name.xml for video
    // editors; a failure is shown in a message box.
    void saveCutList();
    // Whether there is an analysis to write a cut list of.
    bool canSaveCutList() const;
    // Whether a drop would be taken now.
    bool acceptsDrops() const;
    // The button Return presses on the current screen, when it can be pressed.
    QPushButton* defaultButton() const;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void showScreen();
    void setDropTargeted(bool targeted);

    AppModel& m_model;
    BatchModel& m_batch;
    std::unique_ptr<FilePanels> m_panels;
    WelcomeScreen* m_welcome;
    WorkScreen* m_work;
    BatchView* m_batchView;
};
