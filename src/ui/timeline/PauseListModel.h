#pragma once

#include "Segment.h"

#include <QAbstractListModel>
#include <QSet>
#include <vector>

// The detected pauses as check-box rows: checked means the pause will be cut. The model never
// flips a row itself; it asks for the change and shows it once the owner's given-back set
// says so.
class PauseListModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { StartRole = Qt::UserRole + 1 };

    explicit PauseListModel(QObject* parent = nullptr);

    void setSilences(std::vector<Segment> silences);
    void setDisabledSilences(const QSet<int>& disabled);
    const std::vector<Segment>& silences() const { return m_silences; }

    // "m:ss · n.n s": where the pause starts and how long it is.
    QString label(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    // The user asked to cut or give back the pause at `row`.
    void toggleRequested(int row);

private:
    std::vector<Segment> m_silences;
    QSet<int> m_disabled;
};
