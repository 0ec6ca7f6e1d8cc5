#include "ContentView.h"

#include "AppModel.h"
#include "BatchModel.h"
#include "BatchView.h"
#include "BrandButton.h"
#include "CutListFiles.h"
#include "FilePanels.h"
#include "Localization.h"
#include "ResultSection.h"
#include "UserMessage.h"
#include "WelcomeScreen.h"
#include "WorkScreen.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeData>
#include <QVBoxLayout>

namespace {

bool isFolder(const QUrl& location)
{
    return QFileInfo(location.toLocalFile()).isDir();
}

QList<QUrl> localFiles(const QMimeData* data)
{
    QList<QUrl> files;
    if (!data || !data->hasUrls())
        return files;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile())
            files.append(url);
    return files;
}

} // namespace

ContentView::ContentView(AppModel& model, BatchModel& batch, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_batch(batch)
    , m_panels(std::make_unique<DialogFilePanels>())
    , m_welcome(new WelcomeScreen(this))
    , m_work(new WorkScreen(model, this))
    , m_batchView(new BatchView(batch, this))
{
    setAcceptDrops(true);
    setFixedWidth(contentWidth);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(outerPadding, outerPadding, outerPadding, outerPadding);
    layout->setSpacing(0);
    layout->addWidget(m_welcome);
    layout->addWidget(m_work);
    layout->addWidget(m_batchView);

    connect(m_welcome, &WelcomeScreen::pickRequested, this, &ContentView::pickFile);
    connect(m_work, &WorkScreen::pickRequested, this, &ContentView::pickFile);
    connect(m_work, &WorkScreen::saveRequested, this, &ContentView::saveAndTidle);
    connect(m_work, &WorkScreen::cutListRequested, this, &ContentView::saveCutList);
    connect(&m_batch, &BatchModel::itemsChanged, this, &ContentView::showScreen);
    connect(&m_model, &AppModel::inputURLChanged, this, &ContentView::showScreen);
    connect(&m_model, &AppModel::phaseChanged, this, [this] {
        // A finished save adds to the saved time the welcome screen shows.
        m_welcome->refreshSavedTime();
    });
    showScreen();
}

ContentView::~ContentView() = default;

void ContentView::setFilePanels(std::unique_ptr<FilePanels> panels)
{
    m_panels = std::move(panels);
}

ContentView::Screen ContentView::currentScreen() const
{
    if (!m_batch.items().isEmpty())
        return Screen::batch;
    if (m_model.inputURL().isEmpty())
        return Screen::welcome;
    return Screen::work;
}

void ContentView::showScreen()
{
    const Screen shown = currentScreen();
    m_welcome->setVisible(shown == Screen::welcome);
    m_work->setVisible(shown == Screen::work);
    m_batchView->setVisible(shown == Screen::batch);
}

void ContentView::accept(const QList<QUrl>& locations)
{
    if (locations.size() == 1 && !isFolder(locations.front()) && isSupported(locations.front())) {
        m_model.load(locations.front());
        return;
    }
    m_batch.setItems(locations);
    if (!m_batch.items().isEmpty() || locations.isEmpty())
        return;
    // Nothing the batch could take: a single file of another kind still goes to the document,
    // which says why it cannot be read.
    for (const QUrl& location : locations) {
        if (!isFolder(location)) {
            m_model.load(location);
            return;
        }
    }
}

void ContentView::pickFile()
{
    const QList<QUrl> chosen = m_panels->chooseRecordings(window());
    if (!chosen.isEmpty())
        accept(chosen);
}

void ContentView::pickFolder()
{
    const QList<QUrl> chosen = m_panels->chooseFolder(window());
    if (!chosen.isEmpty())
        accept(chosen);
}

void ContentView::saveAndTidle()
{
    const std::optional<Analysis>& analysis = m_model.analysis();
    if (m_model.inputURL().isEmpty() || !analysis || m_model.phase() != AppModel::Phase::ready)
        return;
    const QFileInfo input(m_model.inputURL().toLocalFile());
    const std::optional<QUrl> destination = m_panels->chooseDestination(
        window(), input.absolutePath(),
        AppModel::defaultOutputName(m_model.inputURL(), analysis->outputExtension),
        analysis->outputExtension,
        localized(analysis->hasVideo ? "panel.save.video" : "panel.save.audio"));
    if (destination)
        m_model.tidle(*destination);
}

bool ContentView::canSaveCutList() const
{
    return currentScreen() == Screen::work && !m_model.inputURL().isEmpty() && m_model.analysis() &&
           m_model.phase() == AppModel::Phase::ready;
}

void ContentView::saveCutList()
{
    if (!canSaveCutList())
        return;
    const QFileInfo input(m_model.inputURL().toLocalFile());
    const std::optional<QUrl> destination =
        m_panels->chooseDestination(window(), input.absolutePath(), input.completeBaseName(),
                                    QStringLiteral("edl"), localized("panel.cutList"));
    if (!destination)
        return;
    try {
        CutListFiles::write(input.absoluteFilePath(), m_model.analysis()->keeps,
                            destination->toLocalFile());
    } catch (const std::exception& error) {
        QMessageBox::warning(window(), localized("cutList.failed"), userMessage(error));
    }
}

bool ContentView::acceptsDrops() const
{
    return m_model.phase() != AppModel::Phase::encoding && !m_batch.isRunning();
}

QPushButton* ContentView::defaultButton() const
{
    switch (currentScreen()) {
    case Screen::welcome:
        return nullptr;
    case Screen::work:
        return m_model.phase() == AppModel::Phase::ready ? m_work->result()->saveButton() : nullptr;
    case Screen::batch:
        return m_batchView->defaultButton();
    }
    return nullptr;
}

void ContentView::setDropTargeted(bool targeted)
{
    m_welcome->setDropTargeted(targeted);
}

void ContentView::dragEnterEvent(QDragEnterEvent* event)
{
    // Refused while a file is being written or the batch runs, so the pointer says so.
    if (!acceptsDrops() || localFiles(event->mimeData()).isEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    setDropTargeted(true);
}

void ContentView::dragLeaveEvent(QDragLeaveEvent* event)
{
    setDropTargeted(false);
    QWidget::dragLeaveEvent(event);
}

void ContentView::dropEvent(QDropEvent* event)
{
    setDropTargeted(false);
    const QList<QUrl> files = localFiles(event->mimeData());
    if (!acceptsDrops() || files.isEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    accept(files);
}
