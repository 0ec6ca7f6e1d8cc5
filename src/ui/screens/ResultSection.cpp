#include "ResultSection.h"

#include "AppModel.h"
#include "Appearance.h"
#include "BrandButton.h"
#include "DesktopFiles.h"
#include "ElidedLabel.h"
#include "FormatTime.h"
#include "HeroPercent.h"
#include "Labels.h"
#include "LinkButton.h"
#include "Localization.h"
#include "ResultTexts.h"
#include "Spinner.h"
#include "SymbolLabel.h"
#include "TidleEngine.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

using Phase = AppModel::Phase;

// Below this much progress the analysis has only opened the file: a bar would sit at zero.
constexpr double visibleProgress = 0.01;
constexpr int readyRowHeight = 44;

QProgressBar* makeBar(QWidget* parent)
{
    auto* bar = new QProgressBar(parent);
    bar->setRange(0, 1000);
    bar->setTextVisible(false);
    bar->setFixedHeight(6);
    return bar;
}

int barValue(double fraction)
{
    return static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 1000.0);
}

QHBoxLayout* rowLayout(QWidget* row, int spacing)
{
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

} // namespace

ResultSection::ResultSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
{
    // The rows set the members of their controls, so they are made once every member exists.
    m_analyzing = makeAnalyzingRow();
    m_ready = makeReadyRow();
    m_encoding = makeEncodingRow();
    m_done = makeDoneRow();
    m_failed = makeFailedRow();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* row : {m_analyzing, m_ready, m_encoding, m_done, m_failed})
        layout->addWidget(row);

    connect(&m_model, &AppModel::phaseChanged, this, &ResultSection::showPhase);
    connect(&m_model, &AppModel::analysisProgressChanged, this,
            &ResultSection::showAnalysisProgress);
    connect(&m_model, &AppModel::analysisChanged, this, &ResultSection::showPlan);
    connect(&m_model, &AppModel::progressChanged, this, &ResultSection::showSaveProgress);
    connect(&m_model, &AppModel::outputURLChanged, this, &ResultSection::showPhase);
    connect(&m_model, &AppModel::errorMessageChanged, this, &ResultSection::showFailure);
    showAnalysisProgress();
    showPlan();
    showSaveProgress();
    showFailure();
    showPhase();
}

QWidget* ResultSection::makeAnalyzingRow()
{
    auto* row = new QWidget(this);
    QHBoxLayout* layout = rowLayout(row, 10);
    m_analyzingSpinner = new Spinner(16, row);
    m_analyzingText = Labels::make(localized("result.analyzing"), Appearance::body(),
                                   Appearance::secondaryText(palette()), row);
    m_analysisBar = makeBar(row);
    m_cancelAnalysis = new QPushButton(localized("result.cancel"), row);
    layout->addWidget(m_analyzingSpinner);
    layout->addWidget(m_analyzingText);
    layout->addWidget(m_analysisBar, 1);
    layout->addStretch();
    layout->addWidget(m_cancelAnalysis);
    connect(m_cancelAnalysis, &QPushButton::clicked, &m_model, &AppModel::cancelAnalysis);
    return row;
}

QWidget* ResultSection::makeReadyRow()
{
    auto* row = new QWidget(this);
    row->setMinimumHeight(readyRowHeight);
    QHBoxLayout* layout = rowLayout(row, 16);

    m_summary = new QWidget(row);
    auto* summaryLayout = new QHBoxLayout(m_summary);
    summaryLayout->setContentsMargins(0, 0, 0, 0);
    summaryLayout->setSpacing(6);
    m_summaryIcon = new SymbolLabel(Symbol::info, 16, Appearance::secondaryText, m_summary);
    m_summaryNote =
        Labels::make({}, Appearance::body(), Appearance::secondaryText(palette()), m_summary);
    m_summaryNote->setWordWrap(true);
    auto* lines = new QVBoxLayout;
    lines->setSpacing(2);
    m_summaryFound =
        Labels::make({}, Appearance::headline(), Appearance::primaryText(palette()), m_summary);
    m_summaryLengths = Labels::make({}, Appearance::withEvenDigits(Appearance::body()),
                                    Appearance::secondaryText(palette()), m_summary);
    lines->addWidget(m_summaryFound);
    lines->addWidget(m_summaryLengths);
    summaryLayout->addWidget(m_summaryIcon, 0, Qt::AlignVCenter);
    summaryLayout->addWidget(m_summaryNote, 1);
    summaryLayout->addLayout(lines);

    m_hero = new HeroPercent(row);
    m_save = new BrandButton(QString(), row);
    // The cut list is for the few who finish in a video editor: a quiet link under the save
    // button, not a second button beside it.
    m_cutList = new LinkButton(localized("result.cutList"), row);
    auto* actions = new QVBoxLayout;
    actions->setSpacing(2);
    actions->addWidget(m_save);
    actions->addWidget(m_cutList, 0, Qt::AlignRight);
    layout->addWidget(m_summary, 1);
    layout->addWidget(m_hero);
    layout->addLayout(actions);
    connect(m_save, &QPushButton::clicked, this, &ResultSection::saveRequested);
    connect(m_cutList, &QPushButton::clicked, this, &ResultSection::cutListRequested);
    return row;
}

QWidget* ResultSection::makeEncodingRow()
{
    auto* row = new QWidget(this);
    auto* column = new QVBoxLayout(row);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    auto* line = new QHBoxLayout;
    line->setSpacing(10);
    m_savingText = new QLabel(row);
    m_savingPercent = Labels::make({}, Appearance::withEvenDigits(Appearance::body()),
                                   Appearance::secondaryText(palette()), row);
    m_cancelSave = new QPushButton(localized("result.cancel"), row);
    line->addWidget(m_savingText);
    line->addStretch();
    line->addWidget(m_savingPercent);
    line->addWidget(m_cancelSave);
    column->addLayout(line);
    m_savingBar = makeBar(row);
    column->addWidget(m_savingBar);
    // The engine of the installed analysis is the one writing; cancelling it stops the save
    // and the model returns to ready.
    connect(m_cancelSave, &QPushButton::clicked, this, [this] {
        if (const std::shared_ptr<TidleEngine> engine = m_model.engine())
            engine->cancel();
    });
    return row;
}

QWidget* ResultSection::makeDoneRow()
{
    auto* row = new QWidget(this);
    QHBoxLayout* layout = rowLayout(row, 8);
    layout->addWidget(new SymbolLabel(Symbol::checkmarkFilled, 16, Appearance::green, row));
    m_doneText = new ElidedLabel(Qt::ElideMiddle, row);
    m_doneText->setColor(Appearance::green(palette()));
    m_doneText->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    layout->addWidget(m_doneText, 1);
    m_open = new QPushButton(localized("result.open"), row);
    m_reveal = new QPushButton(localized("result.revealFinder"), row);
    layout->addWidget(m_open);
    layout->addWidget(m_reveal);
    connect(m_open, &QPushButton::clicked, this,
            [this] { DesktopFiles::open(m_model.outputURL()); });
    connect(m_reveal, &QPushButton::clicked, this,
            [this] { DesktopFiles::reveal(m_model.outputURL()); });
    return row;
}

QWidget* ResultSection::makeFailedRow()
{
    auto* row = new QWidget(this);
    QHBoxLayout* layout = rowLayout(row, 8);
    layout->addWidget(new SymbolLabel(Symbol::warningFilled, 16, Appearance::red, row), 0,
                      Qt::AlignTop);
    m_failureText = Labels::make({}, Appearance::body(), Appearance::red(palette()), row);
    m_failureText->setWordWrap(true);
    m_failureText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_failureText, 1);
    m_retry = new QPushButton(localized("result.retry"), row);
    layout->addWidget(m_retry, 0, Qt::AlignTop);
    connect(m_retry, &QPushButton::clicked, &m_model, &AppModel::analyze);
    return row;
}

void ResultSection::showPhase()
{
    const Phase phase = m_model.phase();
    m_analyzing->setVisible(phase == Phase::analyzing);
    m_ready->setVisible(phase == Phase::ready);
    m_encoding->setVisible(phase == Phase::encoding);
    m_done->setVisible(phase == Phase::done && !m_model.outputURL().isEmpty());
    m_failed->setVisible(phase == Phase::failed);
    if (phase == Phase::done)
        showOutput();
}

void ResultSection::showAnalysisProgress()
{
    const double progress = m_model.analysisProgress();
    const bool measurable = progress > visibleProgress;
    m_analyzingSpinner->setVisible(!measurable);
    m_analyzingText->setVisible(!measurable);
    m_analysisBar->setVisible(measurable);
    m_analysisBar->setValue(barValue(progress));
}

void ResultSection::showPlan()
{
    const std::optional<Analysis>& analysis = m_model.analysis();
    if (!analysis) {
        m_summary->hide();
        m_hero->setPercent(std::nullopt);
        m_save->setEnabled(false);
        m_cutList->setEnabled(false);
        return;
    }
    const double kept = analysis->keptSeconds();
    const double removed = analysis->removedSeconds();
    const bool nothingRemoved = removed < ResultTexts::minRemovedSeconds;
    const bool hasNote = analysis->silences.empty() || nothingRemoved;
    m_summary->show();
    m_summaryIcon->setVisible(hasNote);
    m_summaryNote->setVisible(hasNote);
    m_summaryFound->setVisible(!hasNote);
    m_summaryLengths->setVisible(!hasNote);
    if (analysis->silences.empty())
        m_summaryNote->setText(localized("result.noPauses"));
    else if (nothingRemoved)
        m_summaryNote->setText(localized("result.allKept"));
    m_summaryFound->setText(localizedCount("result.found", int(analysis->silences.size())));
    m_summaryLengths->setText(ResultTexts::durationChange(analysis->duration, kept));

    m_hero->setPercent(ResultTexts::heroPercent(removed, analysis->duration));
    m_save->setText(localized(analysis->hasVideo ? "result.save.video" : "result.save.audio"));
    m_save->setEnabled(!nothingRemoved);
    m_cutList->setEnabled(true);
    m_savingText->setText(
        localized(analysis->hasVideo ? "result.saving.video" : "result.saving.audio"));
}

QString ResultSection::summaryText() const
{
    if (!m_summaryNote->isHidden())
        return m_summaryNote->text();
    return m_summaryFound->text() + QLatin1Char('\n') + m_summaryLengths->text();
}

void ResultSection::showSaveProgress()
{
    m_savingPercent->setText(ResultTexts::progressPercent(m_model.progress()));
    m_savingBar->setValue(barValue(m_model.progress()));
}

void ResultSection::showOutput()
{
    const std::optional<Analysis>& analysis = m_model.analysis();
    if (m_model.outputURL().isEmpty() || !analysis)
        return;
    const QString name = QFileInfo(m_model.outputURL().toLocalFile()).fileName();
    m_doneText->setText(localized("result.done").arg(name, formatTime(analysis->keptSeconds())));
}

void ResultSection::showFailure()
{
    const QString message = m_model.errorMessage();
    m_failureText->setText(message.isEmpty() ? localized("result.failed") : message);
}
