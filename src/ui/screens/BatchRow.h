#pragma once

#include "BatchItem.h"

#include <QWidget>

class ElidedLabel;
class QHBoxLayout;
class QLabel;
class QPushButton;
class Spinner;
class SymbolLabel;

// One file of the batch list: its status as an icon, its name, and what became of it.
class BatchRow : public QWidget {
    Q_OBJECT
public:
    explicit BatchRow(const BatchItem& item, QWidget* parent = nullptr);

    void setItem(const BatchItem& item);
    const BatchItem& item() const { return m_item; }

    // What the row shows, for tests and screen readers.
    QString fileNameText() const;
    QString trailingText() const;
    bool showsSpinner() const;
    QPushButton* revealButton() const { return m_reveal; }

private:
    void showStatus();

    BatchItem m_item;
    SymbolLabel* m_icon;
    Spinner* m_spinner;
    ElidedLabel* m_name;
    ElidedLabel* m_trailing;
    QPushButton* m_reveal;
};
