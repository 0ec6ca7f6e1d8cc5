#include "Symbols.h"

#include <QPainter>
#include <QSvgRenderer>

namespace {

struct SymbolSource {
    const char* themeName; // freedesktop symbolic icon, empty when the theme has no match
    const char* resource;  // our own drawing
};

SymbolSource sourceOf(Symbol symbol)
{
    switch (symbol) {
    case Symbol::scissors:
        return {"", ":/icons/scissors.svg"};
    case Symbol::waveform:
        return {"audio-x-generic-symbolic", ":/icons/waveform.svg"};
    case Symbol::film:
        return {"video-x-generic-symbolic", ":/icons/film.svg"};
    case Symbol::play:
        return {"media-playback-start-symbolic", ":/icons/play.svg"};
    case Symbol::pause:
        return {"media-playback-pause-symbolic", ":/icons/pause.svg"};
    case Symbol::info:
        return {"dialog-information-symbolic", ":/icons/info.svg"};
    case Symbol::clockCheck:
        return {"", ":/icons/clock-check.svg"};
    case Symbol::checkmarkFilled:
        return {"emblem-ok-symbolic", ":/icons/checkmark-circle.svg"};
    case Symbol::warningFilled:
        return {"dialog-warning-symbolic", ":/icons/warning.svg"};
    case Symbol::circle:
        return {"", ":/icons/circle.svg"};
    case Symbol::minusCircle:
        return {"", ":/icons/minus-circle.svg"};
    case Symbol::folder:
        return {"folder-symbolic", ":/icons/folder.svg"};
    case Symbol::playCircle:
        return {"", ":/icons/play-circle.svg"};
    case Symbol::stack:
        return {"", ":/icons/stack.svg"};
    }
    return {"", ""};
}

// The shape of the symbol in opaque pixels, transparent elsewhere.
QImage shapeOf(Symbol symbol, int pixels)
{
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const SymbolSource source = sourceOf(symbol);
    const QIcon themed =
        *source.themeName ? QIcon::fromTheme(QLatin1String(source.themeName)) : QIcon();
    QPainter painter(&image);
    if (!themed.isNull()) {
        painter.drawPixmap(0, 0, themed.pixmap(pixels, pixels));
    } else {
        QSvgRenderer renderer(QString::fromLatin1(source.resource));
        renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    }
    return image;
}

} // namespace

namespace Symbols {

QPixmap pixmap(Symbol symbol, const QBrush& paint, int size, qreal devicePixelRatio)
{
    const int pixels = qMax(1, qRound(size * devicePixelRatio));
    QImage image = shapeOf(symbol, pixels);
    // Keep the shape's coverage, take the colour from the brush; a gradient brush is laid
    // out in the symbol's own pixels, left edge to right edge.
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    QBrush brush = paint;
    if (const QGradient* gradient = paint.gradient();
        gradient && gradient->type() == QGradient::LinearGradient) {
        QLinearGradient scaled(0, 0, pixels, 0);
        scaled.setStops(gradient->stops());
        brush = QBrush(scaled);
    }
    painter.fillRect(image.rect(), brush);
    painter.end();
    QPixmap result = QPixmap::fromImage(image);
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

QIcon icon(Symbol symbol, const QBrush& paint, int size, qreal devicePixelRatio)
{
    const QPixmap normal = pixmap(symbol, paint, size, devicePixelRatio);
    QPixmap faded(normal.size());
    faded.setDevicePixelRatio(devicePixelRatio);
    faded.fill(Qt::transparent);
    QPainter painter(&faded);
    painter.setOpacity(0.4);
    painter.drawPixmap(0, 0, normal);
    painter.end();
    QIcon icon;
    icon.addPixmap(normal, QIcon::Normal);
    icon.addPixmap(faded, QIcon::Disabled);
    return icon;
}

} // namespace Symbols
