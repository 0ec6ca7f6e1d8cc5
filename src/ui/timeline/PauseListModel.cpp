#include "PauseListModel.h"

#include "FormatTime.h"
#include "Localization.h"

PauseListModel::PauseListModel(QObject* parent)
    : QAbstractListModel(parent)
{
}

void PauseListModel::setSilences(std::vector<Segment> silences)
{
    beginResetModel();
    m_silences = std::move(silences);
    endResetModel();
}

void PauseListModel::setDisabledSilences(const QSet<int>& disabled)
{
    m_disabled = disabled;
    if (!m_silences.empty())
        emit dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
}

QString PauseListModel::label(int row) const
{
    const Segment& pause = m_silences.at(static_cast<std::size_t>(row));
    return formatTime(pause.start) + QStringLiteral(" \u00B7 ") +
           localized("unit.seconds").arg(QString::asprintf("%.1f", pause.length()));
}

int PauseListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_silences.size());
}

QVariant PauseListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return label(index.row());
    case Qt::CheckStateRole:
        return m_disabled.contains(index.row()) ? Qt::Unchecked : Qt::Checked;
    case StartRole:
        return m_silences[static_cast<std::size_t>(index.row())].start;
    default:
        return {};
    }
}

bool PauseListModel::setData(const QModelIndex& index, const QVariant&, int role)
{
    if (role != Qt::CheckStateRole ||
        !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return false;
    // Whatever state was asked for, the owner decides; the row follows its given-back set.
    emit toggleRequested(index.row());
    return true;
}

Qt::ItemFlags PauseListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsUserCheckable;
}
