#pragma once

#include <QtCore/QAbstractItemModel>

#include <vector>

/// The rows of a model at all depths, parents ahead of their children.
std::vector<QModelIndex> everyRow(const QAbstractItemModel& model, const QModelIndex& parent = {});

/// Fails the test unless each cell knows its row, column and parent, answers every role, and has no neighbour behind
/// the last row. This holds also for models whose signals `QAbstractItemModelTester` stops at.
void expectTree(const QAbstractItemModel& model, const QModelIndex& parent = {});
