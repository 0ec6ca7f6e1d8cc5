#pragma once

class QFrame;
class QWidget;

// A one-pixel horizontal rule in a faint text colour.
QFrame* makeDivider(QWidget* parent);
