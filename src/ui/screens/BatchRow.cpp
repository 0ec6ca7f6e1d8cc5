#include "BatchRow.h"

#include "Appearance.h"
#include "DesktopFiles.h"
#include "ElidedLabel.h"
#include "Localization.h"
#include "ResultTexts.h"
#include "Spinner.h"
#include "SymbolLabel.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>

namespace {

constexpr int iconBoxWidth = 18;

struct StatusLook {
    Symbol symbol = Symbol::circle;
    bool spinning = false;
    SymbolLabel::Paint iconPaint;
    QString trailing;
    std::function<QColor(const QPalette&)> trailingColor;
};

StatusLook lookOf(const BatchItem::Status& status)
{
    const auto tertiary = [](const QPalette& p) { return Appearance::tertiaryText(p); };
    const auto secondary = [](const QPalette& p) { return Appearance::secondaryText(p); };
    const auto green = [](const QPalette& p) { return Appearance::green(p); };
    const auto orange = [](const QPalette& p) { return Appearance::orange(p); };
    return std::visit(
        [&](const auto& s) -> StatusLook {
            using S = std::decay_t<decltype(s)>;
            if constexpr (std::is_same_v<S, BatchItem::Waiting>)
                return {Symbol::circle, false, tertiary, localized("batch.row.waiting"), tertiary};
            else if constexpr (std::is_same_v<S, BatchItem::Analyzing>)
                return {Symbol::circle, true, secondary, localized("batch.row.analyzing"),
                        secondary};
            else if constexpr (std::is_same_v<S, BatchItem::Encoding>)
                return {Symbol::circle, true, secondary, ResultTexts::progressPercent(s.progress),
                        secondary};
            else if constexpr (std::is_same_v<S, BatchItem::Done>)
                return {Symbol::checkmarkFilled, false, green,
                        ResultTexts::removedPercent(s.removedFraction), green};
            else if constexpr (std::is_same_v<S, BatchItem::Skipped>)
                return {Symbol::minusCircle, false, secondary, s.reason, secondary};
            else
                return {Symbol::warningFilled, false, orange, s.reason, orange};
        },
        status);
}

} // namespace

BatchRow::BatchRow(const BatchItem& item, QWidget* parent)
    : QWidget(parent)
    , m_item(item)
    , m_icon(new SymbolLabel(Symbol::circle, 16, {}, this))
    , m_spinner(new Spinner(14, this))
    , m_name(new ElidedLabel(Qt::ElideMiddle, this))
    , m_trailing(new ElidedLabel(Qt::ElideRight, this))
    , m_reveal(new QPushButton(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(10);
    layout->setContentsMargins(12, 8, 12, 8);

    auto* iconBox = new QWidget(this);
    iconBox->setFixedWidth(iconBoxWidth);
    auto* iconLayout = new QHBoxLayout(iconBox);
    iconLayout->setContentsMargins(0, 0, 0, 0);
    iconLayout->addWidget(m_icon, 0, Qt::AlignCenter);
    iconLayout->addWidget(m_spinner, 0, Qt::AlignCenter);
    layout->addWidget(iconBox);

    m_name->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    layout->addWidget(m_name, 1);

    m_trailing->setFont(Appearance::withEvenDigits(Appearance::caption()));
    layout->addWidget(m_trailing);

    m_reveal->setFlat(true);
    m_reveal->setCursor(Qt::PointingHandCursor);
    m_reveal->setToolTip(localized("result.revealFinder"));
    m_reveal->setAccessibleName(localized("result.revealFinder"));
    m_reveal->setIcon(Symbols::icon(Symbol::folder, Appearance::secondaryText(palette()), 16,
                                    devicePixelRatioF()));
    m_reveal->setIconSize({16, 16});
    m_reveal->setFixedSize(24, 22);
    // Every row as tall as one with the folder button, so rows do not jump when a file is done.
    setMinimumHeight(m_reveal->height() + 2 * 8);
    connect(m_reveal, &QPushButton::clicked, this, [this] {
        if (const auto* done = std::get_if<BatchItem::Done>(&m_item.status))
            DesktopFiles::reveal(done->output);
    });
    layout->addWidget(m_reveal);

    m_name->setText(QFileInfo(m_item.url.toLocalFile()).fileName());
    showStatus();
}

void BatchRow::setItem(const BatchItem& item)
{
    m_item = item;
    m_name->setText(QFileInfo(m_item.url.toLocalFile()).fileName());
    showStatus();
}

void BatchRow::showStatus()
{
    StatusLook look = lookOf(m_item.status);
    m_icon->setSymbol(look.symbol);
    m_icon->setPaint(look.iconPaint);
    m_icon->setVisible(!look.spinning);
    m_spinner->setVisible(look.spinning);
    m_trailing->setText(look.trailing);
    m_trailing->setColor(look.trailingColor(palette()));
    // A failure message may be long: it takes what the name leaves and is cut at its end.
    const bool failed = std::holds_alternative<BatchItem::Failed>(m_item.status);
    m_trailing->setSizePolicy(failed ? QSizePolicy::Preferred : QSizePolicy::Fixed,
                              QSizePolicy::Fixed);
    m_reveal->setVisible(std::holds_alternative<BatchItem::Done>(m_item.status));
}

QString BatchRow::fileNameText() const
{
    return m_name->text();
}

QString BatchRow::trailingText() const
{
    return m_trailing->text();
}

bool BatchRow::showsSpinner() const
{
    return !m_spinner->isHidden();
}
