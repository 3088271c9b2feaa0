#include "MenuNodes.h"

std::unique_ptr<TMenuNode> MakeMenuRoot()
{
    return std::make_unique<TMenuNode>(QStringLiteral("Menu"), miRoot);
}

std::unique_ptr<TMenuNode> MakeLinkRoot()
{
    return std::make_unique<TMenuNode>(QStringLiteral("Sensitive Links"), miRoot);
}
