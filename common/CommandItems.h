#pragma once

#include "Vlurlname.h"

#include <utility>

// Calls `apply(key, value)` for each query item of a command text, in their order, with the value of the first item of
// that name: a key given twice applies its first value twice, and the second is never seen.
template <class TFunction> void WalkCommandItems(const TURLName& command, TFunction&& apply)
{
    TQueryItems items;
    if (!command.GetQueryItems(items))
        return;
    for (const TQueryItem& item : std::as_const(items))
        apply(item.Name, items.Value(item.Name));
}
