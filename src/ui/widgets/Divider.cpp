#include "Divider.h"

#include "Appearance.h"
#include "Labels.h"

#include <QFrame>

QFrame* makeDivider(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setFixedHeight(1);
    Labels::setTextColor(line, Appearance::faded(Appearance::primaryText(line->palette()), 0.12));
    return line;
}
