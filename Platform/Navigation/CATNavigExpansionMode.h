#pragma once

// How a navigation tree shows an object that has children until the user unfolds or folds it.
enum class CATNavigExpansionMode
{
    FoldedAtFirst,
    UnfoldedAtFirst
};
