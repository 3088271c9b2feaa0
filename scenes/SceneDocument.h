#pragma once

#include "SceneNodes.h"

#include <QString>

#include <memory>

class QIODevice;
class TDocumentFiles;

// The scene configuration's files, all in one directory: the triggers, the actions, the scenes, and the steps of each
// scene. Reader and writer stand side by side, one function for each kind.

// Builds the whole tree, detached, from the files in the directory of `fileName`, the scenes file. What is missing,
// does not parse or has another root stays empty without a message; without a scenes file no scene's steps are read.
// Every file that was read is marked in `files`.
std::unique_ptr<TSceneNode> LoadSceneTree(const QString& fileName, TDocumentFiles& files);

// Write one file's content; `top` may be null for an empty tree.
void WriteTriggers(QIODevice& device, const TSceneNode* top);
void WriteActions(QIODevice& device, const TSceneNode* top);
void WriteScenes(QIODevice& device, const TSceneNode* top);
// Writes nothing at all without a scene.
void WriteSceneSteps(QIODevice& device, const TSceneNode* scene);

// Writes all files, each replaced as a whole, in the order triggers, actions, scenes, steps. Scenes of equal number
// share a file, which the last one gets. Throws TFileError; earlier files then stay written. Returns how many it wrote.
int SaveSceneTree(const QString& fileName, const TSceneNode* top, TDocumentFiles& files);

// Writes what the file at `path` gets when the tree is saved; nothing when it is none of its files.
void WriteSceneFile(QIODevice& device, const TSceneNode* top, const QString& scenesFile, const QString& path);

// The file of a scene's steps, in the directory of the scenes file.
QString SceneStepsFile(const QString& scenesFile, std::int32_t id);
