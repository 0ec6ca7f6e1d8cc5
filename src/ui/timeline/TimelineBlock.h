#pragma once

#include "Analysis.h"

#include <QWidget>
#include <functional>
#include <optional>

class AppModel;
class LinkButton;
class PauseListView;
class QLabel;
class QStackedWidget;
class Spinner;
class TimelineBar;

// The timeline with what its colours mean: the strip (a waiting placeholder until the
// analysis arrives), the legend, the link that gives every pause back, and the pause count
// that opens the pause list.
class TimelineBlock : public QWidget {
    Q_OBJECT
public:
    explicit TimelineBlock(AppModel& model, QWidget* parent = nullptr);
    ~TimelineBlock() override;

    TimelineBar* bar() const { return m_bar; }
    bool showsBar() const;
    LinkButton* resetLink() const { return m_reset; }
    LinkButton* pausesLink() const { return m_pauses; }
    QWidget* restoredLegend() const { return m_restoredLegend; }
    PauseListView* pauseList() const { return m_pauseList; }
    void togglePauseList();

private:
    void showAnalysis();
    void showGivenBack();
    QWidget* legendDot(const std::function<QBrush(const QPalette&)>& paint, const QString& text);

    AppModel& m_model;
    QStackedWidget* m_strip;
    Spinner* m_waiting = nullptr;
    TimelineBar* m_bar;
    QWidget* m_restoredLegend;
    LinkButton* m_reset;
    LinkButton* m_pauses;
    PauseListView* m_pauseList = nullptr;
    // What the strip was last given, to tell a new analysis from new keeps.
    std::optional<Analysis> m_shown;
};
