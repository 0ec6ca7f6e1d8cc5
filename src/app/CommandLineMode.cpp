#include "CommandLineMode.h"

#include "CommandLineRequest.h"
#include "FormatTime.h"
#include "Sensitivity.h"
#include "TidleEngine.h"
#include "TidleError.h"
#include "UserMessage.h"

#include <QDir>
#include <QtGlobal>
#include <csignal>
#include <cstdio>
#include <exception>

extern "C" {
#include <libavutil/log.h>
}

namespace {

void printLine(const QString& text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
}

void printReport(const Analysis& analysis)
{
    printLine(QStringLiteral("duration: ") + formatTime(analysis.duration));
    printLine(QStringLiteral("pauses:   %1, removing %2")
                  .arg(analysis.silences.size())
                  .arg(formatTime(analysis.removedSeconds())));
    printLine(QStringLiteral("keeping:  %1 across %2 segments")
                  .arg(formatTime(analysis.keptSeconds()))
                  .arg(analysis.keeps.size()));
}

// Qt's own formatting: a dot as decimal mark whatever the user's locale.
void printProgress(double fraction)
{
    std::fputs(QString::asprintf("\r%5.1f%%", fraction * 100.0).toUtf8().constData(), stdout);
    std::fflush(stdout);
}

// Standard output is the mode's only channel: the media library and Qt stay quiet.
void silenceLibraries()
{
    av_log_set_level(AV_LOG_QUIET);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

// Ctrl+C and SIGTERM cancel the running job like the window's cancel button, so the export
// removes its unfinished file on the way out instead of dying with it half written.
TidleEngine* interruptedEngine = nullptr;
// The engine forgets a cancel that comes between its jobs; this remembers it.
volatile std::sig_atomic_t interrupted = 0;

void cancelOnSignal(int)
{
    interrupted = 1;
    // TidleEngine::cancel() is one lock-free atomic store: safe in a signal handler.
    if (interruptedEngine)
        interruptedEngine->cancel();
}

class SignalCancel {
public:
    explicit SignalCancel(TidleEngine& engine)
    {
        interruptedEngine = &engine;
        struct sigaction action {};
        action.sa_handler = cancelOnSignal;
        sigemptyset(&action.sa_mask);
        for (int signal : {SIGINT, SIGTERM})
            sigaction(signal, &action, &m_previous[signal == SIGINT ? 0 : 1]);
    }
    ~SignalCancel()
    {
        sigaction(SIGINT, &m_previous[0], nullptr);
        sigaction(SIGTERM, &m_previous[1], nullptr);
        interruptedEngine = nullptr;
    }
    SignalCancel(const SignalCancel&) = delete;
    SignalCancel& operator=(const SignalCancel&) = delete;

private:
    struct sigaction m_previous[2]{};
};

} // namespace

int runCLI(const QStringList& arguments)
{
    silenceLibraries();
    const auto request = CommandLineRequest::parse(arguments, QDir::currentPath());
    if (!request) {
        printLine(QStringLiteral("usage: Hushpane --cli [--fast] <input> [output]"));
        std::fflush(stdout);
        return 2;
    }

    TidleSettings settings;
    SensitivityPresets::applyNumbers(Sensitivity::standard, settings);
    settings.frameAccurate = !request->fast;

    TidleEngine engine;
    static_assert(std::atomic<bool>::is_always_lock_free);
    const SignalCancel signalCancel(engine);
    try {
        const Analysis analysis = engine.analyze(request->input, settings);
        printReport(analysis);
        std::fflush(stdout);
        if (interrupted)
            throw TidleError::cancelled();
        engine.encode(request->input, request->output, analysis, settings, printProgress);
    } catch (const std::exception& error) {
        printLine(QStringLiteral("error: ") + userMessage(error));
        std::fflush(stdout);
        return 1;
    }
    printLine(QStringLiteral("\rdone: ") + request->output);
    std::fflush(stdout);
    return 0;
}
