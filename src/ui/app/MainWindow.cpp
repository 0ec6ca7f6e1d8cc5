#include "MainWindow.h"

#include "AppModel.h"
#include "BatchModel.h"
#include "ContentView.h"
#include "Localization.h"
#include "ResultTexts.h"

#include "TidleEngine.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLayout>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

MainWindow::MainWindow(AppModel& model, BatchModel& batch, QWidget* parent)
    : QMainWindow(parent)
    , m_model(model)
    , m_batch(batch)
    , m_content(new ContentView(model, batch, this))
{
    setWindowTitle(localized("Hushpane"));
    setCentralWidget(m_content);
    // The width is the content's; the height follows whatever the screen shows.
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    buildMenus();
    addKeyboardShortcuts();

    connect(&m_model, &AppModel::phaseChanged, this, &MainWindow::updateActions);
    connect(&m_model, &AppModel::analysisChanged, this, &MainWindow::updateActions);
    connect(&m_batch, &BatchModel::itemsChanged, this, &MainWindow::updateActions);
    connect(&m_batch, &BatchModel::isRunningChanged, this, &MainWindow::updateActions);
    updateActions();
}

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(localized("menu.file"));
    m_open = file->addAction(localized("menu.open"), QKeySequence::Open, m_content,
                             &ContentView::pickFile);
    m_openFolder = file->addAction(localized("menu.openFolder"),
                                   QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), m_content,
                                   &ContentView::pickFolder);
    m_save = file->addAction(localized("menu.save"), QKeySequence::Save, m_content,
                             &ContentView::saveAndTidle);
    m_saveCutList =
        file->addAction(localized("menu.saveCutList"), m_content, &ContentView::saveCutList);
    file->addSeparator();
    QAction* quit =
        file->addAction(localized("menu.quit"), QKeySequence::Quit, this, &QWidget::close);
    quit->setMenuRole(QAction::QuitRole);

    QMenu* help = menuBar()->addMenu(localized("menu.help"));
    m_about = help->addAction(localized("about.menu"), this, &MainWindow::aboutRequested);
    m_about->setMenuRole(QAction::AboutRole);
}

void MainWindow::addKeyboardShortcuts()
{
    // Return presses the screen's main button (save, run), as in a dialog.
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(QKeySequence(key), this);
        connect(shortcut, &QShortcut::activated, this, [this] {
            QPushButton* button = m_content->defaultButton();
            if (button && button->isVisible() && button->isEnabled())
                button->click();
        });
    }
    // Space plays and pauses the preview, as in every media player.
    auto* playPause = new QShortcut(QKeySequence(Qt::Key_Space), this);
    connect(playPause, &QShortcut::activated, this, [this] {
        if (m_content->currentScreen() == ContentView::Screen::work &&
            m_model.phase() != AppModel::Phase::encoding)
            m_model.togglePlayback();
    });
}

void MainWindow::updateActions()
{
    const bool busy = m_model.phase() == AppModel::Phase::encoding || m_batch.isRunning();
    m_open->setEnabled(!busy);
    m_openFolder->setEnabled(!busy);
    const std::optional<Analysis>& analysis = m_model.analysis();
    m_save->setEnabled(m_content->currentScreen() == ContentView::Screen::work &&
                       m_model.phase() == AppModel::Phase::ready && analysis &&
                       analysis->removedSeconds() >= ResultTexts::minRemovedSeconds);
    m_saveCutList->setEnabled(m_content->canSaveCutList());
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    keepOnScreen();
}

void MainWindow::keepOnScreen()
{
    // The window grows downwards with its content; where that would run past the bottom of
    // the screen, it moves up instead (never above the top).
    const QScreen* screen = this->screen();
    if (!screen || !isVisible())
        return;
    const QRect available = screen->availableGeometry();
    const QRect frame = frameGeometry();
    const int overflow = frame.bottom() - available.bottom();
    if (overflow > 0)
        move(x(), qMax(available.top(), frame.top() - overflow));
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_shown)
        return;
    m_shown = true;
    emit firstShown();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    const bool saving = m_model.phase() == AppModel::Phase::encoding;
    if (!saving && !m_batch.isRunning()) {
        event->accept();
        return;
    }
    QMessageBox question(QMessageBox::Warning, localized("quit.busy.title"),
                         localized("quit.busy.text"), QMessageBox::NoButton, this);
    QPushButton* quit =
        question.addButton(localized("quit.busy.quit"), QMessageBox::DestructiveRole);
    QPushButton* keep = question.addButton(localized("quit.busy.keep"), QMessageBox::RejectRole);
    question.setDefaultButton(keep);
    question.exec();
    if (question.clickedButton() != quit) {
        event->ignore();
        return;
    }
    if (saving) {
        if (const std::shared_ptr<TidleEngine> engine = m_model.engine())
            engine->cancel();
    }
    if (m_batch.isRunning())
        m_batch.stop();
    event->accept();
}
