#pragma once

#include <QWidget>

class AdvancedSliders;
class AppModel;
class QLabel;
class SegmentedPicker;

// How eagerly pauses are found: the preset picker, its explanation, and the numbers behind
// it when the user asks for them.
class SettingsSection : public QWidget {
    Q_OBJECT
public:
    explicit SettingsSection(AppModel& model, QWidget* parent = nullptr);

    SegmentedPicker* presetPicker() const { return m_picker; }
    QLabel* hintLabel() const { return m_hint; }
    AdvancedSliders* advancedPanel() const { return m_advanced; }
    bool showsAdvanced() const;

private:
    void showSensitivity();

    AppModel& m_model;
    SegmentedPicker* m_picker;
    QLabel* m_hint;
    QWidget* m_advancedPanel;
    AdvancedSliders* m_advanced;
};
