#pragma once

#include <QtGui/QPalette>

/// Black on white in every colour scheme: a page says what it needs for itself and takes white paper for granted.
inline QPalette paper(QPalette palette)
{
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Link, Qt::blue);
    return palette;
}
