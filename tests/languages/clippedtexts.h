#pragma once

#include <QStringList>

class QWidget;

/// What is shown of a window and has less room than its text needs, is outside its parent or lies over
/// another widget with a text, in a line each: "QLabel "Fast Computer": 60 x 15, needs 92 x 15". Rows of
/// views and the label that repeats the newest row are no texts of a language, and are not looked at.
QStringList clippedTexts(const QWidget &window);
