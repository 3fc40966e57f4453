#pragma once

#include "cmake/precompiled/standard.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QRegularExpression>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QString>
#include <QtCore/QVariant>
