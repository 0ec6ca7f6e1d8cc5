#include "WorkScreen.h"

#include "Divider.h"
#include "FileHeader.h"
#include "PlayerSection.h"
#include "ResultSection.h"
#include "SettingsSection.h"

#include <QFrame>
#include <QVBoxLayout>

WorkScreen::WorkScreen(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , m_header(new FileHeader(model, this))
    , m_player(new PlayerSection(model, this))
    , m_settings(new SettingsSection(model, this))
    , m_result(new ResultSection(model, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(14);
    layout->addWidget(m_header);
    layout->addWidget(m_player);
    layout->addWidget(makeDivider(this));
    layout->addWidget(m_settings);
    layout->addWidget(makeDivider(this));
    layout->addWidget(m_result);

    connect(m_header, &FileHeader::pickRequested, this, &WorkScreen::pickRequested);
    connect(m_result, &ResultSection::saveRequested, this, &WorkScreen::saveRequested);
    connect(m_result, &ResultSection::cutListRequested, this, &WorkScreen::cutListRequested);
}
