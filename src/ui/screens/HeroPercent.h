#pragma once

#include <QVariantAnimation>
#include <QWidget>
#include <optional>

// The large removed-percent figure, in the brand gradient. A new value counts up or down to
// itself with a short spring.
class HeroPercent : public QWidget {
    Q_OBJECT
public:
    explicit HeroPercent(QWidget* parent = nullptr);

    // The whole percent removed; none hides the figure.
    void setPercent(std::optional<int> percent);
    // The text it ends on, "−37%".
    QString text() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<int> m_percent;
    double m_shown = 0.0;
    QVariantAnimation m_count;
};
