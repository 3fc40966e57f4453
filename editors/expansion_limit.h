#pragma once

class QTreeView;

/// Has the key "*" open at most 1,000 levels below the current row. QTreeView lays out a branch within its branch, and
/// names that a stranger's package may hold lie so deep that the stack would not do.
/// @param view  owns what is installed
void limitExpansion(QTreeView* view);
