#include "AboutDialog.h"

#include "Appearance.h"
#include "Labels.h"
#include "Localization.h"
#include "Stats.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

AboutDialog::AboutDialog(QWidget* parent)
    : QDialog(parent)
    , m_credits(Labels::make({}, Appearance::caption(), Appearance::secondaryText(palette()), this))
{
    setWindowTitle(localized("about.menu"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 24, 28, 16);
    layout->setSpacing(8);

    auto* icon = new QLabel(this);
    icon->setPixmap(QApplication::windowIcon().pixmap(72, 72));
    layout->addWidget(icon, 0, Qt::AlignHCenter);

    QLabel* name = Labels::make(QStringLiteral("Hushpane"), Appearance::title(),
                                Appearance::primaryText(palette()), this);
    layout->addWidget(name, 0, Qt::AlignHCenter);
    QLabel* version =
        Labels::make(localized("about.version").arg(QApplication::applicationVersion()),
                     Appearance::body(), Appearance::secondaryText(palette()), this);
    layout->addWidget(version, 0, Qt::AlignHCenter);

    m_credits->setAlignment(Qt::AlignCenter);
    m_credits->setWordWrap(true);
    m_credits->setMinimumWidth(260);
    layout->addSpacing(6);
    layout->addWidget(m_credits);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addSpacing(6);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    refreshCredits();
}

void AboutDialog::refreshCredits()
{
    m_credits->setText(localized("about.credits").arg(Stats::savedDescription()));
}
