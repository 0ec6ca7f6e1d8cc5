#pragma once

#include <QWidget>
#include <vector>

class BatchModel;
class BatchRow;
class BrandButton;
class QLabel;
class QPushButton;
class QVBoxLayout;
class SegmentedPicker;

// The batch list in place of the single-file screens: a row per file, the summary, the
// preset for the whole run and the run, stop and clear controls.
class BatchView : public QWidget {
    Q_OBJECT
public:
    explicit BatchView(BatchModel& batch, QWidget* parent = nullptr);

    const std::vector<BatchRow*>& rows() const { return m_rows; }
    // The button Return presses, when it can be pressed.
    QPushButton* defaultButton() const;

    QPushButton* clearButton() const { return m_clear; }
    QPushButton* runButton() const;
    QPushButton* stopButton() const { return m_stop; }
    SegmentedPicker* presetPicker() const { return m_picker; }
    QLabel* summaryLabel() const { return m_summary; }

private:
    void rebuildRows();
    void showRunState();
    void showSensitivity();

    BatchModel& m_batch;
    QLabel* m_summary;
    QPushButton* m_clear;
    QWidget* m_listContent;
    QVBoxLayout* m_listLayout;
    SegmentedPicker* m_picker;
    BrandButton* m_run;
    QPushButton* m_stop;
    std::vector<BatchRow*> m_rows;
};
