#include "HushpaneApp.h"

#include "AboutDialog.h"
#include "AppModel.h"
#include "BatchItem.h"
#include "BatchModel.h"
#include "Completion.h"
#include "DesktopPalette.h"
#include "LaunchLocations.h"
#include "Localization.h"
#include "MainWindow.h"
#include "PreviewPlayer.h"
#include "QtPreviewPlayer.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <QTimer>

HushpaneApp::HushpaneApp(std::unique_ptr<PreviewPlayer> player, QObject* parent)
    : QObject(parent)
    , m_model(std::make_unique<AppModel>(player ? std::move(player)
                                                : std::make_unique<QtPreviewPlayer>()))
    , m_batch(std::make_unique<BatchModel>())
    , m_window(std::make_unique<MainWindow>(*m_model, *m_batch))
{
    connect(m_window.get(), &MainWindow::firstShown, this, &HushpaneApp::onFirstShown);
    connect(m_window.get(), &MainWindow::aboutRequested, this, &HushpaneApp::showAbout);
}

// The window goes before the models it shows.
HushpaneApp::~HushpaneApp()
{
    delete m_about;
    m_window.reset();
}

void HushpaneApp::show()
{
    m_window->show();
}

void HushpaneApp::handleOpenRequest(const QUrl& location)
{
    if (!isSupported(location) || m_batch->isRunning() || !m_batch->items().isEmpty())
        return;
    m_model->load(location);
}

void HushpaneApp::handleLaunchRequest(const LaunchRequest& request)
{
    for (const QString& path : request.openPaths)
        handleOpenRequest(QUrl::fromLocalFile(path));
    if (!request.batchPath.isEmpty() && !m_batch->isRunning())
        m_batch->setItems({QUrl::fromLocalFile(request.batchPath)});
    m_window->raise();
    m_window->activateWindow();
}

void HushpaneApp::showAbout()
{
    if (!m_about)
        m_about = new AboutDialog(m_window.get());
    m_about->refreshCredits();
    m_about->show();
    m_about->raise();
    m_about->activateWindow();
}

AboutDialog* HushpaneApp::aboutDialog() const
{
    return m_about;
}

void HushpaneApp::onFirstShown()
{
    Completion::requestPermission();
    if (initialBatchURL)
        m_batch->setItems({*initialBatchURL});
    // The launch file is loaded by a queued call and makes the window taller; centre what
    // the window will look like, not the welcome screen it shows for a moment.
    if (initialFileURL)
        QTimer::singleShot(0, this, &HushpaneApp::centreWindow);
}

void HushpaneApp::centreWindow()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect available = screen->availableGeometry();
    const QRect frame = m_window->frameGeometry();
    m_window->move(available.center().x() - frame.width() / 2,
                   available.center().y() - frame.height() / 2);
}

bool windowSystemAvailable()
{
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") ||
           !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

int runApplication(QApplication& app, const LaunchRequest& request)
{
    QApplication::setApplicationName(QStringLiteral("Hushpane"));
    QApplication::setOrganizationName(QStringLiteral("Hushpane"));
    QApplication::setApplicationVersion(QStringLiteral(HUSHPANE_VERSION));
    // Desktops match the window to its .desktop entry (and so its icon and name) by this id.
    QApplication::setDesktopFileName(QStringLiteral(HUSHPANE_APP_ID));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/hushpane.svg")));
    installStringTables();

    // A second launch hands what it was given to the window already open.
    LaunchRequest forwarded = request;
    if (initialFileURL)
        forwarded.openPaths.prepend(initialFileURL->toLocalFile());
    if (initialBatchURL)
        forwarded.batchPath = initialBatchURL->toLocalFile();
    SingleInstance instance(SingleInstance::defaultServerName());
    if (instance.handOver(forwarded))
        return 0;
    instance.listen();

    // Without a desktop theme Qt falls back to its dated Windows look; Fusion is its modern one.
    if (QApplication::style()->name().compare(QLatin1String("windows"), Qt::CaseInsensitive) == 0)
        QApplication::setStyle(QStringLiteral("Fusion"));
    DesktopPalette::apply();
    HushpaneApp shell;
    QObject::connect(&instance, &SingleInstance::requestReceived, &shell,
                     &HushpaneApp::handleLaunchRequest);
    shell.show();
    for (const QString& path : request.openPaths)
        shell.handleOpenRequest(QUrl::fromLocalFile(path));
    const int status = app.exec();
    return status;
}
