#include "WelcomeScreen.h"

#include "Appearance.h"
#include "Brand.h"
#include "BrandButton.h"
#include "DropZone.h"
#include "Labels.h"
#include "Localization.h"
#include "Stats.h"
#include "SymbolLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

// Below a second there is nothing worth telling.
constexpr double minSavedSecondsShown = 1.0;

QLabel* centredLabel(const QString& text, const QFont& font, const QColor& color, QWidget* parent)
{
    QLabel* label = Labels::make(text, font, color, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

} // namespace

WelcomeScreen::WelcomeScreen(QWidget* parent)
    : QWidget(parent)
    , m_zone(new DropZone(this))
    , m_pick(new BrandButton(localized("welcome.pick"), this))
    , m_savedLine(new QWidget(this))
    , m_savedText(new QLabel(m_savedLine))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    const QPalette colors = palette();
    auto* zoneLayout = new QVBoxLayout(m_zone);
    zoneLayout->setSpacing(14);
    zoneLayout->setContentsMargins(24, 24, 24, 24);
    zoneLayout->addStretch();
    zoneLayout->addWidget(
        new SymbolLabel(
            Symbol::scissors, 48,
            [](const QPalette&) { return QBrush(Brand::gradient(QRectF(0, 0, 48, 48))); }, m_zone),
        0, Qt::AlignHCenter);
    zoneLayout->addWidget(centredLabel(localized("welcome.title"), Appearance::title(),
                                       Appearance::primaryText(colors), m_zone));
    zoneLayout->addWidget(centredLabel(localized("welcome.subtitle"), Appearance::body(),
                                       Appearance::secondaryText(colors), m_zone));
    zoneLayout->addWidget(centredLabel(localized("welcome.batchHint"), Appearance::caption(),
                                       Appearance::tertiaryText(colors), m_zone));
    zoneLayout->addWidget(m_pick, 0, Qt::AlignHCenter);
    zoneLayout->addStretch();
    layout->addWidget(m_zone);

    auto* savedLayout = new QHBoxLayout(m_savedLine);
    savedLayout->setContentsMargins(0, 10, 0, 0);
    savedLayout->setSpacing(6);
    savedLayout->addStretch();
    savedLayout->addWidget(
        new SymbolLabel(Symbol::clockCheck, 14, Appearance::secondaryText, m_savedLine));
    m_savedText->setFont(Appearance::caption());
    Labels::setTextColor(m_savedText, Appearance::secondaryText(palette()));
    savedLayout->addWidget(m_savedText);
    savedLayout->addStretch();
    layout->addWidget(m_savedLine);

    m_zone->setAccessibleName(localized("welcome.title"));
    m_zone->setAccessibleDescription(localized("welcome.subtitle"));
    connect(m_zone, &DropZone::clicked, this, &WelcomeScreen::pickRequested);
    connect(m_pick, &QPushButton::clicked, this, &WelcomeScreen::pickRequested);
    refreshSavedTime();
}

void WelcomeScreen::setDropTargeted(bool targeted)
{
    m_zone->setTargeted(targeted);
}

bool WelcomeScreen::isDropTargeted() const
{
    return m_zone->isTargeted();
}

void WelcomeScreen::refreshSavedTime()
{
    const bool show = Stats::totalSecondsSaved() >= minSavedSecondsShown;
    if (show)
        m_savedText->setText(localized("welcome.saved").arg(Stats::savedDescription()));
    m_savedLine->setVisible(show);
}

bool WelcomeScreen::showsSavedTime() const
{
    return !m_savedLine->isHidden();
}

void WelcomeScreen::showEvent(QShowEvent* event)
{
    refreshSavedTime();
    QWidget::showEvent(event);
}
