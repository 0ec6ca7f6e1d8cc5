#pragma once

#include "Segment.h"

#include <QFrame>
#include <QSet>
#include <functional>
#include <vector>

class QLabel;
class QListView;
class PauseListModel;

// Every detected pause with its start and length: a tick cuts it, no tick gives it back, and
// the play button jumps to just before it. Shown as a popup under the pause-count link. Like
// the timeline it holds no document: the owner sets the inputs and acts on the callbacks.
class PauseListView : public QFrame {
    Q_OBJECT

public:
    static constexpr int totalWidth = 250;
    static constexpr int padding = 14;
    static constexpr int spacing = 8;
    static constexpr int maximumListHeight = 260;
    // How far before a pause listening starts, so the words leading into it are heard.
    static constexpr double listenLeadIn = 1.0;

    explicit PauseListView(QWidget* parent = nullptr);

    void setSilences(std::vector<Segment> silences);
    void setDisabledSilences(const QSet<int>& disabled);

    // Opens as a popup just below `anchor`, centred on it and kept on its screen. The popup
    // closes itself on a click elsewhere or Escape, and then emits closed().
    void showBelow(QWidget* anchor);

    // Called with a pause's index in the silences when its tick is changed.
    std::function<void(int)> onToggle;
    // Called with a time in seconds when the user listens to a pause.
    std::function<void(double)> onSeek;

    PauseListModel* model() const { return m_model; }
    QListView* list() const { return m_list; }

signals:
    void closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void listen(int row);
    void fitHeight();

    PauseListModel* m_model;
    QLabel* m_title;
    QListView* m_list;
};
