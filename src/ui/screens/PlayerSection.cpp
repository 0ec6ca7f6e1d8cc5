#include "PlayerSection.h"

#include "AppModel.h"
#include "Appearance.h"
#include "FormatTime.h"
#include "Labels.h"
#include "Localization.h"
#include "PreviewPlayer.h"
#include "Symbols.h"
#include "TimelineBlock.h"
#include "VideoPreview.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int playSymbolSize = 16;

} // namespace

PlayerSection::PlayerSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_video(new VideoPreview(this))
    , m_timeline(new TimelineBlock(model, this))
    , m_play(new QPushButton(this))
    , m_time(Labels::make({}, Appearance::withEvenDigits(Appearance::body()),
                          Appearance::secondaryText(palette()), this))
    , m_skipPauses(new QCheckBox(localized("preview.skipPauses"), this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_video);
    layout->addWidget(m_timeline);

    auto* controls = new QHBoxLayout;
    controls->setSpacing(12);
    m_play->setIconSize({playSymbolSize, playSymbolSize});
    m_play->setFixedSize(40, 30);
    m_play->setCursor(Qt::PointingHandCursor);
    controls->addWidget(m_play);
    controls->addWidget(m_time);
    controls->addStretch();
    m_skipPauses->setToolTip(localized("preview.skipPauses.help"));
    m_skipPauses->setFont(Appearance::caption());
    controls->addWidget(m_skipPauses);
    layout->addLayout(controls);

    m_model.player()->setVideoOutput(m_video->videoOutput());

    connect(m_play, &QPushButton::clicked, &m_model, &AppModel::togglePlayback);
    connect(m_skipPauses, &QCheckBox::toggled, &m_model, &AppModel::setSkipPausesInPreview);
    connect(&m_model, &AppModel::isPlayingChanged, this, &PlayerSection::showPlayState);
    connect(&m_model, &AppModel::playheadChanged, this, &PlayerSection::showTime);
    connect(&m_model, &AppModel::analysisChanged, this, &PlayerSection::showTime);
    connect(&m_model, &AppModel::analysisChanged, this, [this] {
        m_video->setHasPicture(!m_model.analysis() || m_model.analysis()->hasVideo);
    });
    connect(&m_model, &AppModel::phaseChanged, this, &PlayerSection::showPhase);
    connect(&m_model, &AppModel::skipPausesInPreviewChanged, this, [this] {
        const QSignalBlocker quiet(m_skipPauses);
        m_skipPauses->setChecked(m_model.skipPausesInPreview());
    });
    m_skipPauses->setChecked(m_model.skipPausesInPreview());
    showPlayState();
    showTime();
    showPhase();
}

void PlayerSection::showPlayState()
{
    const bool playing = m_model.isPlaying();
    m_play->setIcon(Symbols::icon(playing ? Symbol::pause : Symbol::play,
                                  Appearance::primaryText(palette()), playSymbolSize,
                                  devicePixelRatioF()));
    const QString action = localized(playing ? "preview.pause" : "preview.play");
    m_play->setToolTip(action);
    m_play->setAccessibleName(action);
}

void PlayerSection::showTime()
{
    const double duration = m_model.analysis() ? m_model.analysis()->duration : 0.0;
    m_time->setText(formatTime(m_model.playhead()) + QStringLiteral(" / ") + formatTime(duration));
}

void PlayerSection::showPhase()
{
    m_play->setEnabled(m_model.phase() != AppModel::Phase::encoding);
}
