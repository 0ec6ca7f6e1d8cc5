#include "BrandButton.h"
#include "Brand.h"
#include "DocumentTestSupport.h"

#include <QImage>
#include <QTest>
#include <gtest/gtest.h>

namespace {

QImage render(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

bool isWhite(const QColor& c)
{
    return c.red() > 250 && c.green() > 250 && c.blue() > 250;
}

QList<QPoint> whitePixels(const QImage& image)
{
    QList<QPoint> points;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (isWhite(image.pixelColor(x, y)))
                points.append({x, y});
    return points;
}

// A point on the background, clear of the rounded corners and of the label.
QPoint backgroundPoint(const QWidget& button)
{
    return {4, button.height() / 2};
}

} // namespace

TEST(BrandButtonTest, DisabledFadesTheBackgroundButNotTheLabel)
{
    BrandButton button(QStringLiteral("Save the File"));
    button.resize(button.sizeHint());
    const QColor window = button.palette().color(QPalette::Window);

    const QImage enabled = render(button);
    button.setEnabled(false);
    const QImage disabled = render(button);

    const QColor full = enabled.pixelColor(backgroundPoint(button));
    const QColor faded = disabled.pixelColor(backgroundPoint(button));
    // The disabled background is 40 % of the gradient over the window.
    const auto blend = [&](int gradient, int behind) { return 0.4 * gradient + 0.6 * behind; };
    EXPECT_NEAR(faded.red(), blend(full.red(), window.red()), 3);
    EXPECT_NEAR(faded.green(), blend(full.green(), window.green()), 3);
    EXPECT_NEAR(faded.blue(), blend(full.blue(), window.blue()), 3);
    // The enabled background is the brand's first colour at the left edge.
    EXPECT_NEAR(full.red(), Brand::start().red(), 12);
    EXPECT_NEAR(full.blue(), Brand::start().blue(), 12);
    // The label stays fully white: where it is white on the full gradient, it still is.
    const QList<QPoint> label = whitePixels(enabled);
    ASSERT_GT(label.size(), 10);
    for (const QPoint& point : label)
        EXPECT_TRUE(isWhite(disabled.pixelColor(point))) << point.x() << "," << point.y();
}

TEST(BrandButtonTest, ShrinksWhilePressedAndSpringsBack)
{
    BrandButton button(QStringLiteral("Run"));
    button.resize(200, button.sizeHint().height());
    button.show();
    const QPoint edge(1, button.height() / 2);
    const QColor window = button.palette().color(QPalette::Window);
    ASSERT_NE(render(button).pixelColor(edge), window);

    QTest::mousePress(&button, Qt::LeftButton);
    runEventLoop(400);
    // 3 % of 200 pixels: the left edge moves in by 3 pixels.
    EXPECT_EQ(render(button).pixelColor(edge), window);

    QTest::mouseRelease(&button, Qt::LeftButton);
    runEventLoop(400);
    EXPECT_NE(render(button).pixelColor(edge), window);
}
