#include "FileHeader.h"

#include "AppModel.h"
#include "Appearance.h"
#include "ElidedLabel.h"
#include "FormatTime.h"
#include "Labels.h"
#include "Localization.h"
#include "SymbolLabel.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

FileHeader::FileHeader(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_kind(new SymbolLabel(Symbol::film, 18, Appearance::secondaryText, this))
    , m_name(new ElidedLabel(Qt::ElideMiddle, this))
    , m_duration(Labels::make({}, Appearance::body(), Appearance::secondaryText(palette()), this))
    , m_otherFile(new QPushButton(localized("header.otherFile"), this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_kind);
    m_name->setFont(Appearance::headline());
    m_name->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    layout->addWidget(m_name);
    layout->addWidget(m_duration);
    layout->addStretch();
    layout->addWidget(m_otherFile);

    connect(m_otherFile, &QPushButton::clicked, this, &FileHeader::pickRequested);
    connect(&m_model, &AppModel::inputURLChanged, this, &FileHeader::refresh);
    connect(&m_model, &AppModel::analysisChanged, this, &FileHeader::refresh);
    connect(&m_model, &AppModel::phaseChanged, this, &FileHeader::refresh);
    refresh();
}

void FileHeader::refresh()
{
    const std::optional<Analysis>& analysis = m_model.analysis();
    // Until the analysis tells, a file is taken for a video.
    m_kind->setSymbol(analysis && !analysis->hasVideo ? Symbol::waveform : Symbol::film);
    m_name->setText(QFileInfo(m_model.inputURL().toLocalFile()).fileName());
    m_duration->setVisible(analysis.has_value());
    if (analysis)
        m_duration->setText(formatTime(analysis->duration));
    m_otherFile->setEnabled(m_model.phase() != AppModel::Phase::encoding);
}
