#include "AppModel.h"

#include "Completion.h"
#include "FormatTime.h"
#include "LaunchLocations.h"
#include "Localization.h"
#include "OutputName.h"
#include "Prefs.h"
#include "QtPreviewPlayer.h"
#include "RecentDocuments.h"
#include "SerialQueue.h"
#include "Stats.h"
#include "TidleEngine.h"
#include "TidleError.h"
#include "UserMessage.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <cmath>

AppModel::AppModel(QObject* parent)
    : AppModel(std::make_unique<QtPreviewPlayer>(), parent)
{
}

AppModel::AppModel(std::unique_ptr<PreviewPlayer> player, QObject* parent)
    : QObject(parent)
    , m_player(std::move(player))
    , m_queue(std::make_unique<SerialQueue>(QStringLiteral("tidle")))
{
    // The stored values go in before anything listens, so loading them starts no analysis.
    loadPreferences();
    attachSettingsObserver();
    attachSaveObserver();
    attachPlayer();
    if (initialFileURL) {
        QMetaObject::invokeMethod(
            this, [this, url = *initialFileURL] { load(url); }, Qt::QueuedConnection);
    }
}

AppModel::~AppModel()
{
    m_player->disconnect(this);
    // The queue waits for its running job. An analysis is cancelled and ends at its next
    // packet; a save runs to its end, since the user asked for that file, and its time saved
    // and announcement still arrive through the application object. Joining here, while the
    // whole model still exists, means no job posts to a dying object.
    if (m_analyzingEngine)
        m_analyzingEngine->cancel();
    if (m_phase == Phase::encoding)
        m_queue->keepPendingJobs();
    else if (m_engine)
        m_engine->cancel();
    m_queue.reset();
}

// --- Preferences and observers ---

void AppModel::loadPreferences()
{
    EditorPreferences preferences{m_sensitivity, m_settings, m_skipPausesInPreview};
    Prefs::load(preferences);
    m_sensitivity = preferences.sensitivity;
    m_settings = preferences.settings;
    m_skipPausesInPreview = preferences.skipPausesInPreview;
}

void AppModel::savePreferences() const
{
    Prefs::save(EditorPreferences{m_sensitivity, m_settings, m_skipPausesInPreview});
}

void AppModel::attachSettingsObserver()
{
    m_analyzeDebounce.setSingleShot(true);
    m_analyzeDebounce.setInterval(analyzeDelayMs);
    connect(&m_analyzeDebounce, &QTimer::timeout, this, &AppModel::analyze);
    connect(this, &AppModel::settingsChanged, this, &AppModel::onSettingsAssigned);
}

void AppModel::onSettingsAssigned()
{
    if (m_lastFilteredSettings == m_settings)
        return;
    m_lastFilteredSettings = m_settings;
    m_analyzeDebounce.start();
}

void AppModel::attachSaveObserver()
{
    m_saveDebounce.setSingleShot(true);
    m_saveDebounce.setInterval(saveDelayMs);
    connect(&m_saveDebounce, &QTimer::timeout, this, &AppModel::savePreferences);
    connect(this, &AppModel::settingsChanged, &m_saveDebounce, qOverload<>(&QTimer::start));
    connect(this, &AppModel::sensitivityChanged, &m_saveDebounce, qOverload<>(&QTimer::start));
    connect(this, &AppModel::skipPausesInPreviewChanged, &m_saveDebounce,
            qOverload<>(&QTimer::start));
    // Writes the values just loaded back once, even when nothing changes.
    m_saveDebounce.start();
}

void AppModel::attachPlayer()
{
    // The play state reaches isPlaying one event-loop turn later, starting with the current one.
    connect(m_player.get(), &PreviewPlayer::playingChanged, this, &AppModel::assignIsPlaying,
            Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        this, [this, playing = m_player->isPlaying()] { assignIsPlaying(playing); },
        Qt::QueuedConnection);
    connect(m_player.get(), &PreviewPlayer::positionReported, this, &AppModel::tick);
}

// --- Fields the views write ---

void AppModel::setSettings(const TidleSettings& settings)
{
    m_settings = settings;
    emit settingsChanged();
}

void AppModel::assignSensitivity(Sensitivity sensitivity)
{
    m_sensitivity = sensitivity;
    emit sensitivityChanged();
}

void AppModel::setShowAdvanced(bool show)
{
    m_showAdvanced = show;
    emit showAdvancedChanged();
}

void AppModel::setSkipPausesInPreview(bool skip)
{
    m_skipPausesInPreview = skip;
    emit skipPausesInPreviewChanged();
}

// --- File and analysis ---

void AppModel::load(const QUrl& url)
{
    if (m_phase == Phase::encoding)
        return;
    assignInputURL(url);
    assignAnalysis(std::nullopt);
    assignOutputURL({});
    assignErrorMessage({});
    assignPlayhead(0.0);
    if (url.isLocalFile())
        RecentDocuments::add(url.toLocalFile());
    m_player->setSource(url);
    analyze();
}

void AppModel::analyze()
{
    if (m_inputURL.isEmpty() || m_phase == Phase::encoding)
        return;
    if (m_analyzingEngine)
        m_analyzingEngine->cancel();
    assignPhase(Phase::analyzing);
    assignAnalysisProgress(0.0);
    assignErrorMessage({});
    assignOutputURL({});

    const qint64 generation = ++m_analyzeGeneration;
    const TidleSettings settings = m_settings;
    const QString path = m_inputURL.toLocalFile();
    auto engine = std::make_shared<TidleEngine>();
    m_analyzingEngine = engine;

    // The model is the context of every queued call: Qt drops them once it is gone, and the
    // destructor joins the queue before the model stops being a valid context.
    m_queue->submit([this, engine, generation, settings, path] {
        try {
            Analysis analysis = engine->analyze(path, settings, [this, generation](double p) {
                QMetaObject::invokeMethod(
                    this,
                    [this, generation, p] {
                        if (generation == m_analyzeGeneration)
                            assignAnalysisProgress(p);
                    },
                    Qt::QueuedConnection);
            });
            QMetaObject::invokeMethod(
                this,
                [this, generation, engine, analysis = std::move(analysis)]() mutable {
                    installAnalysis(generation, engine, std::move(analysis));
                },
                Qt::QueuedConnection);
        } catch (const TidleError& error) {
            if (error.kind() == TidleError::Kind::cancelled)
                return;
            QMetaObject::invokeMethod(
                this,
                [this, generation, message = userMessage(error)] {
                    failAnalysis(generation, message);
                },
                Qt::QueuedConnection);
        } catch (const std::exception& error) {
            QMetaObject::invokeMethod(
                this,
                [this, generation, message = userMessage(error)] {
                    failAnalysis(generation, message);
                },
                Qt::QueuedConnection);
        }
    });
}

void AppModel::installAnalysis(qint64 generation, const std::shared_ptr<TidleEngine>& engine,
                               Analysis analysis)
{
    if (generation != m_analyzeGeneration)
        return;
    m_engine = engine;
    m_analyzingEngine.reset();
    assignAnalysis(std::move(analysis));
    assignDisabledSilences({});
    assignPhase(Phase::ready);
}

void AppModel::failAnalysis(qint64 generation, const QString& message)
{
    if (generation != m_analyzeGeneration)
        return;
    m_analyzingEngine.reset();
    assignErrorMessage(message);
    assignPhase(Phase::failed);
}

void AppModel::cancelAnalysis()
{
    // A running save is stopped through its engine, never by this.
    if (m_phase == Phase::encoding)
        return;
    if (m_analyzingEngine) {
        m_analyzingEngine->cancel();
        m_analyzingEngine.reset();
    }
    ++m_analyzeGeneration;
    if (m_analysis)
        assignPhase(Phase::ready);
    else
        clear();
}

void AppModel::clear()
{
    if (m_phase == Phase::encoding)
        return;
    if (m_analyzingEngine) {
        m_analyzingEngine->cancel();
        m_analyzingEngine.reset();
    }
    ++m_analyzeGeneration;
    m_player->pause();
    m_player->clear();
    assignPhase(Phase::idle);
    assignInputURL({});
    assignAnalysis(std::nullopt);
    assignOutputURL({});
    assignErrorMessage({});
    assignPlayhead(0.0);
}

void AppModel::setSensitivity(Sensitivity sensitivity)
{
    assignSensitivity(sensitivity);
    if (sensitivity == Sensitivity::custom) {
        setShowAdvanced(true);
        return;
    }
    // Three assignments, as a user moving three sliders would make; the settings observer
    // joins them into one analysis.
    TidleSettings preset = m_settings;
    SensitivityPresets::applyNumbers(sensitivity, preset);
    TidleSettings next = m_settings;
    next.thresholdDB = preset.thresholdDB;
    setSettings(next);
    next.minPause = preset.minPause;
    setSettings(next);
    next.padding = preset.padding;
    setSettings(next);
}

// --- Given-back pauses ---

void AppModel::toggleSilence(int index)
{
    if (!m_analysis || index < 0 || index >= static_cast<int>(m_analysis->silences.size()))
        return;
    if (m_phase != Phase::ready && m_phase != Phase::done)
        return;
    QSet<int> indices = m_disabledSilences;
    if (!indices.remove(index))
        indices.insert(index);
    assignDisabledSilences(indices);
    rebuildKeeps();
}

void AppModel::resetSilenceOverrides()
{
    if (m_disabledSilences.isEmpty())
        return;
    assignDisabledSilences({});
    rebuildKeeps();
}

void AppModel::rebuildKeeps()
{
    if (!m_analysis)
        return;
    std::vector<Segment> removed;
    for (int i = 0; i < static_cast<int>(m_analysis->silences.size()); ++i) {
        if (!m_disabledSilences.contains(i))
            removed.push_back(m_analysis->silences[i]);
    }
    // The current padding counts, even when it changed after the analysis ran.
    Analysis replanned = *m_analysis;
    replanned.keeps = TidleEngine::keepSegments(removed, replanned.duration, m_settings.padding,
                                                TidleEngine::minKeep);
    assignAnalysis(std::move(replanned));
    assignOutputURL({});
    if (m_phase == Phase::done)
        assignPhase(Phase::ready);
}

// --- Preview ---

void AppModel::tick(double seconds)
{
    if (!std::isfinite(seconds))
        return;
    assignPlayhead(seconds);
    if (!m_skipPausesInPreview || !m_isPlaying || !m_analysis)
        return;
    const std::vector<Segment>& keeps = m_analysis->keeps;
    const bool inside = std::any_of(keeps.begin(), keeps.end(), [seconds](const Segment& keep) {
        return keep.start - keepTolerance <= seconds && seconds < keep.end + keepTolerance;
    });
    if (inside)
        return;
    const auto next = std::find_if(keeps.begin(), keeps.end(),
                                   [seconds](const Segment& keep) { return keep.start > seconds; });
    if (next == keeps.end()) {
        m_player->pause();
        return;
    }
    const double target = next->start;
    assignPlayhead(target);
    m_player->seek(target);
}

void AppModel::togglePlayback()
{
    if (m_isPlaying) {
        m_player->pause();
        return;
    }
    if (m_analysis && m_playhead >= m_analysis->duration - endMargin) {
        const std::vector<Segment>& keeps = m_analysis->keeps;
        const double target = keeps.empty() ? 0.0 : keeps.front().start;
        assignPlayhead(target);
        m_player->seek(target);
    }
    m_player->play();
}

void AppModel::seek(double seconds)
{
    assignPlayhead(seconds);
    m_player->seek(seconds);
}

// --- Saving ---

void AppModel::tidle(const QUrl& output)
{
    if (m_inputURL.isEmpty() || !m_analysis || !m_engine || m_phase != Phase::ready)
        return;
    // The plain comparison catches the common slip; the engine itself refuses the same file
    // reached by another path.
    if (output.toLocalFile() == m_inputURL.toLocalFile()) {
        assignErrorMessage(localized("error.overwrite"));
        assignPhase(Phase::failed);
        return;
    }
    m_player->pause();
    assignPhase(Phase::encoding);
    assignProgress(0.0);
    assignErrorMessage({});

    const QString input = m_inputURL.toLocalFile();
    const Analysis analysis = *m_analysis;
    const TidleSettings settings = m_settings;
    const std::shared_ptr<TidleEngine> engine = m_engine;
    m_queue->submit([this, engine, input, output, analysis, settings] {
        try {
            engine->encode(input, output.toLocalFile(), analysis, settings, [this](double p) {
                QMetaObject::invokeMethod(
                    this, [this, p] { assignProgress(p); }, Qt::QueuedConnection);
            });
        } catch (const TidleError& error) {
            if (error.kind() == TidleError::Kind::cancelled) {
                QMetaObject::invokeMethod(
                    this, [this] { assignPhase(Phase::ready); }, Qt::QueuedConnection);
                return;
            }
            const QString message = userMessage(error);
            QMetaObject::invokeMethod(
                this,
                [this, message] {
                    assignErrorMessage(message);
                    assignPhase(Phase::failed);
                },
                Qt::QueuedConnection);
            return;
        } catch (const std::exception& error) {
            const QString message = userMessage(error);
            QMetaObject::invokeMethod(
                this,
                [this, message] {
                    assignErrorMessage(message);
                    assignPhase(Phase::failed);
                },
                Qt::QueuedConnection);
            return;
        }

        const double removed = analysis.removedSeconds();
        QMetaObject::invokeMethod(
            this,
            [this, output] {
                assignOutputURL(output);
                assignPhase(Phase::done);
            },
            Qt::QueuedConnection);
        // The time saved counts and the user hears of it even when the window's model is gone.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [output, removed] {
                Stats::add(removed);
                const QString body =
                    localized("notify.video.body")
                        .arg(QFileInfo(output.toLocalFile()).fileName(), formatTime(removed));
                Completion::notify(localized("notify.video.title"), body);
            },
            Qt::QueuedConnection);
    });
}

QString AppModel::defaultOutputName(const QUrl& input, const QString& ext)
{
    // The batch names its files the same way.
    return ::defaultOutputName(input, ext);
}

// --- Published fields: every assignment is announced ---

void AppModel::assignPhase(Phase phase)
{
    m_phase = phase;
    emit phaseChanged();
}

void AppModel::assignInputURL(const QUrl& url)
{
    m_inputURL = url;
    emit inputURLChanged();
}

void AppModel::assignAnalysis(std::optional<Analysis> analysis)
{
    m_analysis = std::move(analysis);
    emit analysisChanged();
}

void AppModel::assignProgress(double progress)
{
    m_progress = progress;
    emit progressChanged();
}

void AppModel::assignAnalysisProgress(double progress)
{
    m_analysisProgress = progress;
    emit analysisProgressChanged();
}

void AppModel::assignOutputURL(const QUrl& url)
{
    m_outputURL = url;
    emit outputURLChanged();
}

void AppModel::assignErrorMessage(const QString& message)
{
    m_errorMessage = message;
    emit errorMessageChanged();
}

void AppModel::assignDisabledSilences(const QSet<int>& indices)
{
    m_disabledSilences = indices;
    emit disabledSilencesChanged();
}

void AppModel::assignPlayhead(double seconds)
{
    m_playhead = seconds;
    emit playheadChanged();
}

void AppModel::assignIsPlaying(bool playing)
{
    m_isPlaying = playing;
    emit isPlayingChanged();
}
