#include "BatchView.h"

#include "Appearance.h"
#include "BatchModel.h"
#include "BatchRow.h"
#include "BrandButton.h"
#include "Divider.h"
#include "Labels.h"
#include "Localization.h"
#include "RoundedPanel.h"
#include "SegmentedPicker.h"
#include "Sensitivity.h"
#include "SymbolLabel.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <algorithm>
#include <array>

namespace {

constexpr int listHeight = 300;
constexpr int pickerWidth = 280;
// The batch runs with a preset, never with hand-set numbers.
constexpr std::array<Sensitivity, 3> batchPresets = {Sensitivity::delicate, Sensitivity::standard,
                                                     Sensitivity::aggressive};

} // namespace

BatchView::BatchView(BatchModel& batch, QWidget* parent)
    : QWidget(parent)
    , m_batch(batch)
    , m_summary(new QLabel(this))
    , m_clear(new QPushButton(localized("batch.clear"), this))
    , m_listContent(new QWidget)
    , m_listLayout(new QVBoxLayout(m_listContent))
    , m_picker(new SegmentedPicker({}, this))
    , m_run(new BrandButton(localized("batch.run"), this))
    , m_stop(new QPushButton(localized("batch.stop"), this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(14);

    auto* header = new QHBoxLayout;
    header->setSpacing(8);
    header->addWidget(new SymbolLabel(Symbol::stack, 18, Appearance::secondaryText, this));
    auto* title = new QLabel(localized("batch.title"), this);
    title->setFont(Appearance::headline());
    header->addWidget(title);
    header->addStretch();
    header->addWidget(m_clear);
    auto* headerRow = new QWidget(this);
    headerRow->setLayout(header);
    header->setContentsMargins(0, 0, 0, 0);
    // The clear button comes and goes with the run; the row keeps its height.
    headerRow->setMinimumHeight(m_clear->sizeHint().height());
    layout->addWidget(headerRow);

    m_summary->setFont(Appearance::caption());
    Labels::setTextColor(m_summary, Appearance::secondaryText(palette()));
    layout->addWidget(m_summary);

    auto* panel = new RoundedPanel(10, 0.06, this);
    auto* scroll = new QScrollArea(panel);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->viewport()->setAutoFillBackground(false);
    m_listContent->setAutoFillBackground(false);
    m_listLayout->setContentsMargins(0, 0, 0, 0);
    m_listLayout->setSpacing(0);
    m_listLayout->addStretch();
    scroll->setWidget(m_listContent);
    auto* panelLayout = new QVBoxLayout(panel);
    panelLayout->setContentsMargins(0, 0, 0, 0);
    panelLayout->addWidget(scroll);
    panel->setFixedHeight(listHeight);
    layout->addWidget(panel);

    auto* controls = new QHBoxLayout;
    controls->setSpacing(12);
    QStringList titles;
    for (Sensitivity preset : batchPresets)
        titles << SensitivityPresets::title(preset);
    m_picker->setTitles(titles);
    m_picker->setFixedWidth(pickerWidth);
    m_picker->setAccessibleName(localized("sensitivity.title"));
    controls->addWidget(m_picker);
    controls->addStretch();
    controls->addWidget(m_stop);
    controls->addWidget(m_run);
    layout->addLayout(controls);

    connect(m_picker, &SegmentedPicker::activated, this,
            [this](int index) { m_batch.setSensitivity(batchPresets[index]); });
    connect(m_clear, &QPushButton::clicked, &m_batch, &BatchModel::clear);
    connect(m_run, &QPushButton::clicked, &m_batch, &BatchModel::run);
    connect(m_stop, &QPushButton::clicked, &m_batch, &BatchModel::stop);

    connect(&m_batch, &BatchModel::itemsChanged, this, &BatchView::rebuildRows);
    connect(&m_batch, &BatchModel::isRunningChanged, this, &BatchView::showRunState);
    connect(&m_batch, &BatchModel::sensitivityChanged, this, &BatchView::showSensitivity);
    rebuildRows();
    showRunState();
    showSensitivity();
}

QPushButton* BatchView::runButton() const
{
    return m_run;
}

QPushButton* BatchView::defaultButton() const
{
    return m_batch.isRunning() ? nullptr : m_run;
}

void BatchView::rebuildRows()
{
    m_summary->setText(m_batch.summary());
    const QList<BatchItem>& items = m_batch.items();
    // Status changes arrive as a new list of the same files: only the changed rows redraw.
    const bool sameFiles = static_cast<qsizetype>(m_rows.size()) == items.size() &&
                           std::equal(m_rows.begin(), m_rows.end(), items.begin(),
                                      [](const BatchRow* row, const BatchItem& item) {
                                          return row->item().id == item.id;
                                      });
    if (sameFiles) {
        for (int i = 0; i < items.size(); ++i)
            if (!(m_rows[i]->item() == items[i]))
                m_rows[i]->setItem(items[i]);
        return;
    }
    // Every row is followed by its divider; the trailing stretch keeps short lists at the top.
    while (m_listLayout->count() > 1) {
        QLayoutItem* entry = m_listLayout->takeAt(0);
        delete entry->widget();
        delete entry;
    }
    m_rows.clear();
    for (int i = 0; i < items.size(); ++i) {
        auto* row = new BatchRow(items[i], m_listContent);
        m_listLayout->insertWidget(m_listLayout->count() - 1, row);
        m_listLayout->insertWidget(m_listLayout->count() - 1, makeDivider(m_listContent));
        m_rows.push_back(row);
    }
}

void BatchView::showRunState()
{
    const bool running = m_batch.isRunning();
    m_clear->setVisible(!running);
    m_picker->setEnabled(!running);
    m_run->setVisible(!running);
    m_stop->setVisible(running);
}

void BatchView::showSensitivity()
{
    const auto found = std::find(batchPresets.begin(), batchPresets.end(), m_batch.sensitivity());
    m_picker->setCurrentIndex(found == batchPresets.end() ? -1 : int(found - batchPresets.begin()));
}
