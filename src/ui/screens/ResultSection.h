#pragma once

#include <QWidget>

class AppModel;
class BrandButton;
class ElidedLabel;
class HeroPercent;
class LinkButton;
class QLabel;
class QProgressBar;
class QPushButton;
class Spinner;
class SymbolLabel;

// The bottom of the work screen, following the document's phase: analysis progress, what the
// plan removes and the save button, save progress, the written file, or what went wrong.
class ResultSection : public QWidget {
    Q_OBJECT
public:
    explicit ResultSection(AppModel& model, QWidget* parent = nullptr);

    // The rows, one per phase; at most one is visible.
    QWidget* analyzingRow() const { return m_analyzing; }
    QWidget* readyRow() const { return m_ready; }
    QWidget* encodingRow() const { return m_encoding; }
    QWidget* doneRow() const { return m_done; }
    QWidget* failedRow() const { return m_failed; }

    QProgressBar* analysisBar() const { return m_analysisBar; }
    QLabel* analyzingText() const { return m_analyzingText; }
    QWidget* summary() const { return m_summary; }
    QString summaryText() const;
    HeroPercent* heroPercent() const { return m_hero; }
    BrandButton* saveButton() const { return m_save; }
    LinkButton* cutListLink() const { return m_cutList; }
    QLabel* savingPercent() const { return m_savingPercent; }
    QProgressBar* savingBar() const { return m_savingBar; }
    ElidedLabel* doneText() const { return m_doneText; }
    QLabel* failureText() const { return m_failureText; }
    QPushButton* cancelAnalysisButton() const { return m_cancelAnalysis; }
    QPushButton* cancelSaveButton() const { return m_cancelSave; }
    QPushButton* openButton() const { return m_open; }
    QPushButton* revealButton() const { return m_reveal; }
    QPushButton* retryButton() const { return m_retry; }

signals:
    void saveRequested();
    void cutListRequested();

private:
    QWidget* makeAnalyzingRow();
    QWidget* makeReadyRow();
    QWidget* makeEncodingRow();
    QWidget* makeDoneRow();
    QWidget* makeFailedRow();

    void showPhase();
    void showAnalysisProgress();
    void showPlan();
    void showSaveProgress();
    void showOutput();
    void showFailure();

    AppModel& m_model;

    QWidget* m_analyzing = nullptr;
    Spinner* m_analyzingSpinner = nullptr;
    QLabel* m_analyzingText = nullptr;
    QProgressBar* m_analysisBar = nullptr;
    QPushButton* m_cancelAnalysis = nullptr;

    QWidget* m_ready = nullptr;
    QWidget* m_summary = nullptr;
    SymbolLabel* m_summaryIcon = nullptr;
    QLabel* m_summaryNote = nullptr;
    QLabel* m_summaryFound = nullptr;
    QLabel* m_summaryLengths = nullptr;
    HeroPercent* m_hero = nullptr;
    BrandButton* m_save = nullptr;
    LinkButton* m_cutList = nullptr;

    QWidget* m_encoding = nullptr;
    QLabel* m_savingText = nullptr;
    QLabel* m_savingPercent = nullptr;
    QPushButton* m_cancelSave = nullptr;
    QProgressBar* m_savingBar = nullptr;

    QWidget* m_done = nullptr;
    ElidedLabel* m_doneText = nullptr;
    QPushButton* m_open = nullptr;
    QPushButton* m_reveal = nullptr;

    QWidget* m_failed = nullptr;
    QLabel* m_failureText = nullptr;
    QPushButton* m_retry = nullptr;
};
