#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a table of example bundles shows of one.
struct PrototypeExamplesEntry
{
    QString title;
    QString description;
    QStringList keywords;
};
