#pragma once

#include "SceneNodes.h"

#include <memory>

// Reads a detached tree from a text file of captions, one a line, indented by one tab for each level (UTF-8).
// Everything below the two roots gets an item of its own, with the caption as alias. Throws TUserError for a file that
// cannot be read or whose lines do not make one tree with two roots.
std::unique_ptr<TSceneNode> ReadSceneCaptions(const QString& fileName);
