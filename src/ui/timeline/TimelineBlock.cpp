#include "TimelineBlock.h"

#include "AppModel.h"
#include "Appearance.h"
#include "Brand.h"
#include "Labels.h"
#include "LinkButton.h"
#include "Localization.h"
#include "PauseListView.h"
#include "RoundedPanel.h"
#include "Spinner.h"
#include "TimelineBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QStackedWidget>

namespace {

constexpr int stripHeight = 44;
constexpr int dotSize = 8;

// A filled circle in the colour or gradient of one class of the timeline.
class LegendDot : public QWidget {
public:
    LegendDot(std::function<QBrush(const QPalette&)> paint, QWidget* parent)
        : QWidget(parent)
        , m_paint(std::move(paint))
    {
        setFixedSize(dotSize, dotSize);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_paint(palette()));
        painter.drawEllipse(rect());
    }

private:
    std::function<QBrush(const QPalette&)> m_paint;
};

// A new analysis, rather than the same one with other keeps.
bool isNewAnalysis(const Analysis& shown, const Analysis& next)
{
    return shown.duration != next.duration || shown.silences != next.silences ||
           shown.levelWindow != next.levelWindow || shown.levels != next.levels;
}

} // namespace

TimelineBlock::TimelineBlock(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_strip(new QStackedWidget(this))
    , m_bar(new TimelineBar(m_strip))
    , m_restoredLegend(nullptr)
    , m_reset(new LinkButton(localized("timeline.reset"), this))
    , m_pauses(new LinkButton(QString(), this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    auto* placeholder = new RoundedPanel(6, 0.12, m_strip);
    auto* placeholderLayout = new QHBoxLayout(placeholder);
    m_waiting = new Spinner(16, placeholder);
    placeholderLayout->addWidget(m_waiting, 0, Qt::AlignCenter);
    m_strip->addWidget(placeholder);
    m_strip->addWidget(m_bar);
    m_strip->setFixedHeight(stripHeight);
    layout->addWidget(m_strip);

    m_bar->onSeek = [this](double seconds) { m_model.seek(seconds); };
    m_bar->onToggle = [this](int index) { m_model.toggleSilence(index); };

    auto* legend = new QHBoxLayout;
    legend->setSpacing(14);
    legend->addWidget(legendDot(
        [](const QPalette&) { return QBrush(Brand::gradient(QRectF(0, 0, dotSize, dotSize))); },
        localized("timeline.legend.keep")));
    legend->addWidget(legendDot(
        [](const QPalette& p) {
            return QBrush(Appearance::faded(Appearance::secondaryText(p), 0.45));
        },
        localized("timeline.legend.cut")));
    m_restoredLegend = legendDot([](const QPalette& p) { return QBrush(Appearance::mint(p)); },
                                 localized("timeline.legend.restored"));
    legend->addWidget(m_restoredLegend);
    legend->addWidget(m_reset);
    legend->addStretch();
    legend->addWidget(m_pauses);
    layout->addLayout(legend);

    connect(m_reset, &QPushButton::clicked, &m_model, &AppModel::resetSilenceOverrides);
    connect(m_pauses, &QPushButton::clicked, this, &TimelineBlock::togglePauseList);
    connect(&m_model, &AppModel::analysisChanged, this, &TimelineBlock::showAnalysis);
    connect(&m_model, &AppModel::disabledSilencesChanged, this, &TimelineBlock::showGivenBack);
    // A failed analysis leaves the placeholder without a spinner: nothing is coming.
    connect(&m_model, &AppModel::phaseChanged, this,
            [this] { m_waiting->setVisible(m_model.phase() == AppModel::Phase::analyzing); });
    connect(&m_model, &AppModel::playheadChanged, this,
            [this] { m_bar->setPlayhead(m_model.playhead()); });
    m_waiting->setVisible(m_model.phase() == AppModel::Phase::analyzing);
    showAnalysis();
    showGivenBack();
}

TimelineBlock::~TimelineBlock() = default;

QWidget* TimelineBlock::legendDot(const std::function<QBrush(const QPalette&)>& paint,
                                  const QString& text)
{
    auto* entry = new QWidget(this);
    auto* layout = new QHBoxLayout(entry);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(5);
    layout->addWidget(new LegendDot(paint, entry));
    layout->addWidget(
        Labels::make(text, Appearance::caption(), Appearance::secondaryText(palette()), entry));
    return entry;
}

bool TimelineBlock::showsBar() const
{
    return m_strip->currentWidget() == m_bar;
}

void TimelineBlock::showAnalysis()
{
    const std::optional<Analysis>& analysis = m_model.analysis();
    m_strip->setCurrentIndex(analysis ? 1 : 0);
    if (!analysis) {
        m_pauses->hide();
        if (m_pauseList)
            m_pauseList->hide();
        return;
    }
    if (!m_shown || isNewAnalysis(*m_shown, *analysis)) {
        m_bar->setAnalysisData(analysis->duration, analysis->keeps, analysis->silences,
                               analysis->levels, analysis->levelWindow);
        if (m_pauseList)
            m_pauseList->setSilences(analysis->silences);
    } else {
        m_bar->setKeeps(analysis->keeps);
    }
    m_shown = analysis;
    const int count = static_cast<int>(analysis->silences.size());
    m_pauses->setText(localizedCount("timeline.pausesCount", count));
    m_pauses->setVisible(count > 0);
    m_bar->setPlayhead(m_model.playhead());
}

void TimelineBlock::showGivenBack()
{
    const QSet<int>& givenBack = m_model.disabledSilences();
    m_bar->setDisabledSilences(givenBack);
    if (m_pauseList)
        m_pauseList->setDisabledSilences(givenBack);
    m_restoredLegend->setVisible(!givenBack.isEmpty());
    m_reset->setVisible(!givenBack.isEmpty());
}

void TimelineBlock::togglePauseList()
{
    if (m_pauseList && m_pauseList->isVisible()) {
        m_pauseList->hide();
        return;
    }
    if (!m_model.analysis())
        return;
    if (!m_pauseList) {
        m_pauseList = new PauseListView(this);
        // A click on the link while the list is open only closes it, rather than closing and
        // opening it again.
        m_pauseList->setAttribute(Qt::WA_NoMouseReplay);
        m_pauseList->onToggle = [this](int index) { m_model.toggleSilence(index); };
        m_pauseList->onSeek = [this](double seconds) { m_model.seek(seconds); };
    }
    m_pauseList->setSilences(m_model.analysis()->silences);
    m_pauseList->setDisabledSilences(m_model.disabledSilences());
    m_pauseList->showBelow(m_pauses);
}
