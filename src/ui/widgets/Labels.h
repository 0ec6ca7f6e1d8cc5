#pragma once

#include <QColor>
#include <QFont>
#include <QString>

class QLabel;
class QWidget;

// Text in one of the window's text styles.
namespace Labels {

QLabel* make(const QString& text, const QFont& font, const QColor& color, QWidget* parent);
void setTextColor(QWidget* widget, const QColor& color);

} // namespace Labels
