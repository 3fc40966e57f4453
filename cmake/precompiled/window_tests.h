#pragma once

#include "cmake/precompiled/qt.h"
#include "cmake/precompiled/tests.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeView>
