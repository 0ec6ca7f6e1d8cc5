#include "Appearance.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetricsF>

namespace {

QFont scaled(QFont font, qreal factor, qreal minimumPoints)
{
    if (font.pointSizeF() > 0)
        font.setPointSizeF(qMax(minimumPoints, font.pointSizeF() * factor));
    else
        font.setPixelSize(qMax(1, qRound(font.pixelSize() * factor)));
    return font;
}

} // namespace

namespace Appearance {

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightnessF() < 0.5;
}

QColor primaryText(const QPalette& palette)
{
    return palette.color(QPalette::WindowText);
}

QColor secondaryText(const QPalette& palette)
{
    return faded(primaryText(palette), 0.6);
}

QColor tertiaryText(const QPalette& palette)
{
    return faded(primaryText(palette), 0.38);
}

QColor faded(QColor color, qreal opacity)
{
    color.setAlphaF(color.alphaF() * opacity);
    return color;
}

QColor green(const QPalette& palette)
{
    return isDark(palette) ? QColor(48, 209, 88) : QColor(36, 160, 66);
}

QColor orange(const QPalette& palette)
{
    return isDark(palette) ? QColor(255, 159, 10) : QColor(214, 110, 0);
}

QColor red(const QPalette& palette)
{
    return isDark(palette) ? QColor(255, 69, 58) : QColor(215, 40, 32);
}

QColor mint(const QPalette& palette)
{
    return isDark(palette) ? QColor(99, 230, 226) : QColor(0, 190, 180);
}

QFont body()
{
    return QApplication::font();
}

QFont headline()
{
    QFont font = body();
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont caption()
{
    return scaled(body(), 0.87, 7.5);
}

QFont title()
{
    QFont font = scaled(body(), 1.45, 0);
    font.setWeight(QFont::Bold);
    return font;
}

QFont hero()
{
    QFont font = body();
    font.setPixelSize(30);
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont withEvenDigits(const QFont& base)
{
    const QFontMetricsF metrics(base);
    const qreal zero = metrics.horizontalAdvance(QLatin1Char('0'));
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (!qFuzzyCompare(metrics.horizontalAdvance(QLatin1Char(digit)), zero)) {
            QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
            if (base.pointSizeF() > 0)
                fixed.setPointSizeF(base.pointSizeF());
            else
                fixed.setPixelSize(base.pixelSize());
            return fixed;
        }
    }
    return base;
}

} // namespace Appearance
