#pragma once

#include "Analysis.h"
#include "PreviewPlayer.h"
#include "Sensitivity.h"
#include "TidleSettings.h"
#include "ValueMetaTypes.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <memory>
#include <optional>

class SerialQueue;
class TidleEngine;

// The one media file open in the main window: its analysis, the pauses the user gave back,
// re-analysis when the settings change, the preview and saving. All state lives on the GUI
// thread; analyses and saves run one after another on a worker queue and post their results
// back. Every published field announces every assignment, equal values included.
//
// A location that is empty means "none" (inputURL, outputURL), as does an empty
// errorMessage.
class AppModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(Phase phase READ phase NOTIFY phaseChanged)
    Q_PROPERTY(QUrl inputURL READ inputURL NOTIFY inputURLChanged)
    Q_PROPERTY(std::optional<Analysis> analysis READ analysis NOTIFY analysisChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(double analysisProgress READ analysisProgress NOTIFY analysisProgressChanged)
    Q_PROPERTY(QUrl outputURL READ outputURL NOTIFY outputURLChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(TidleSettings settings READ settings WRITE setSettings NOTIFY settingsChanged)
    Q_PROPERTY(
        Sensitivity sensitivity READ sensitivity WRITE assignSensitivity NOTIFY sensitivityChanged)
    Q_PROPERTY(bool showAdvanced READ showAdvanced WRITE setShowAdvanced NOTIFY showAdvancedChanged)
    Q_PROPERTY(QSet<int> disabledSilences READ disabledSilences NOTIFY disabledSilencesChanged)
    Q_PROPERTY(bool skipPausesInPreview READ skipPausesInPreview WRITE setSkipPausesInPreview NOTIFY
                   skipPausesInPreviewChanged)
    Q_PROPERTY(double playhead READ playhead NOTIFY playheadChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged)

public:
    enum class Phase { idle, analyzing, ready, encoding, done, failed };
    Q_ENUM(Phase)

    // Re-analysis waits this long after the last settings change, saving preferences this
    // long after the last change of settings, preset or preview option.
    static constexpr int analyzeDelayMs = 500;
    static constexpr int saveDelayMs = 300;
    // A position this close before a kept span's start or after its end counts as inside.
    static constexpr double keepTolerance = 0.03;
    // Play pressed this close to the end starts over at the first kept span.
    static constexpr double endMargin = 0.1;

    // The application's model, with the preview on Qt Multimedia.
    explicit AppModel(QObject* parent = nullptr);
    // The same with another player, which the model owns from then on.
    explicit AppModel(std::unique_ptr<PreviewPlayer> player, QObject* parent = nullptr);
    ~AppModel() override;

    Phase phase() const { return m_phase; }
    const QUrl& inputURL() const { return m_inputURL; }
    const std::optional<Analysis>& analysis() const { return m_analysis; }
    double progress() const { return m_progress; }
    double analysisProgress() const { return m_analysisProgress; }
    const QUrl& outputURL() const { return m_outputURL; }
    const QString& errorMessage() const { return m_errorMessage; }
    const TidleSettings& settings() const { return m_settings; }
    Sensitivity sensitivity() const { return m_sensitivity; }
    bool showAdvanced() const { return m_showAdvanced; }
    const QSet<int>& disabledSilences() const { return m_disabledSilences; }
    bool skipPausesInPreview() const { return m_skipPausesInPreview; }
    double playhead() const { return m_playhead; }
    bool isPlaying() const { return m_isPlaying; }

    // The fields the views write directly.
    void setSettings(const TidleSettings& settings);
    // The preset field alone, as a moved slider marks the numbers as the user's own: no
    // numbers change and the advanced panel is not opened.
    void assignSensitivity(Sensitivity sensitivity);
    void setShowAdvanced(bool show);
    void setSkipPausesInPreview(bool skip);

    PreviewPlayer* player() const { return m_player.get(); }
    // The engine of the installed analysis, which saves it; the window cancels a save
    // through it. None before the first analysis succeeds.
    std::shared_ptr<TidleEngine> engine() const { return m_engine; }

    void load(const QUrl& url);
    void analyze();
    void cancelAnalysis();
    void clear();
    // Picks a preset: its numbers go into the settings; `custom` keeps them and opens the
    // advanced settings instead.
    void setSensitivity(Sensitivity sensitivity);
    // Gives back the pause at `index` of the analysis' silences, or takes it away again.
    void toggleSilence(int index);
    void resetSilenceOverrides();

    void togglePlayback();
    // Moves the preview to `seconds`; the playhead shows it before the player gets there.
    void seek(double seconds);

    // Writes the kept spans of the open file to `output`, then counts the removed time and
    // tells the user. Only in `ready`; refuses the input itself as destination.
    void tidle(const QUrl& output);
    // The name proposed for the new file: the input's base name in the localized pattern,
    // with `ext` as extension.
    static QString defaultOutputName(const QUrl& input, const QString& ext);

signals:
    void phaseChanged();
    void inputURLChanged();
    void analysisChanged();
    void progressChanged();
    void analysisProgressChanged();
    void outputURLChanged();
    void errorMessageChanged();
    void settingsChanged();
    void sensitivityChanged();
    void showAdvancedChanged();
    void disabledSilencesChanged();
    void skipPausesInPreviewChanged();
    void playheadChanged();
    void isPlayingChanged();

private:
    void loadPreferences();
    void savePreferences() const;
    void attachSettingsObserver();
    void attachSaveObserver();
    void attachPlayer();
    void onSettingsAssigned();

    void installAnalysis(qint64 generation, const std::shared_ptr<TidleEngine>& engine,
                         Analysis analysis);
    void failAnalysis(qint64 generation, const QString& message);
    void rebuildKeeps();
    void tick(double seconds);

    void assignPhase(Phase phase);
    void assignInputURL(const QUrl& url);
    void assignAnalysis(std::optional<Analysis> analysis);
    void assignProgress(double progress);
    void assignAnalysisProgress(double progress);
    void assignOutputURL(const QUrl& url);
    void assignErrorMessage(const QString& message);
    void assignDisabledSilences(const QSet<int>& indices);
    void assignPlayhead(double seconds);
    void assignIsPlaying(bool playing);

    Phase m_phase = Phase::idle;
    QUrl m_inputURL;
    std::optional<Analysis> m_analysis;
    double m_progress = 0.0;
    double m_analysisProgress = 0.0;
    QUrl m_outputURL;
    QString m_errorMessage;
    TidleSettings m_settings;
    Sensitivity m_sensitivity = Sensitivity::standard;
    bool m_showAdvanced = false;
    QSet<int> m_disabledSilences;
    bool m_skipPausesInPreview = true;
    double m_playhead = 0.0;
    bool m_isPlaying = false;

    std::unique_ptr<PreviewPlayer> m_player;
    // Shared with the queued work, which must keep its engine alive while it runs.
    std::shared_ptr<TidleEngine> m_engine;
    std::shared_ptr<TidleEngine> m_analyzingEngine;
    qint64 m_analyzeGeneration = 0;
    // The last settings value that passed the duplicate filter; none before the first.
    std::optional<TidleSettings> m_lastFilteredSettings;
    QTimer m_analyzeDebounce;
    QTimer m_saveDebounce;
    std::unique_ptr<SerialQueue> m_queue;
};
