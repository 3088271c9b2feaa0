#pragma once

#include <QtGlobal>

// Marks what the host library offers to the workbench and to packages.
#ifdef VLHOST_BUILD
#define VLHOST_API Q_DECL_EXPORT
#else
#define VLHOST_API Q_DECL_IMPORT
#endif
