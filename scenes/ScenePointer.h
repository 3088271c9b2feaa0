#pragma once

#include <QString>

// Points the automation services at the active project's scenes: a small file in their own installation (KOLT_HOME)
// names the project. Does nothing where they are not installed, or while no project is open. While it names another
// project, the user is asked whether to change it. Throws TFileError when the file cannot be read or written.
void UpdateScenePointer(const QString& scenesMod);
