#pragma once

#include "TidleSettings.h"

#include <QWidget>
#include <functional>

class AdvancedSlider;
class AppModel;
class SegmentedPicker;

// The numbers behind the presets, for users who want them: threshold, shortest pause,
// padding, and how video is saved.
class AdvancedSliders : public QWidget {
    Q_OBJECT
public:
    explicit AdvancedSliders(AppModel& model, QWidget* parent = nullptr);

    AdvancedSlider* thresholdSlider() const { return m_threshold; }
    AdvancedSlider* minPauseSlider() const { return m_minPause; }
    AdvancedSlider* paddingSlider() const { return m_padding; }
    SegmentedPicker* saveModePicker() const { return m_saveMode; }

private:
    void showSettings();
    void edit(const std::function<void(TidleSettings&)>& change);

    AppModel& m_model;
    AdvancedSlider* m_threshold;
    AdvancedSlider* m_minPause;
    AdvancedSlider* m_padding;
    SegmentedPicker* m_saveMode;
};
