#pragma once

#include "Vlexport.h"
#include "Vlinterfaces.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <initializer_list>

// Paths and files. Paths inside the package use the backslash; every operation here takes both separators and turns a
// path into the platform's form at the last moment. A name that itself contains a backslash cannot be reached.

inline constexpr char16_t PathSeparator = u'\\';

// The platform's form of a path, usable by the toolkit and by child processes, and the package's form with backslashes.
VLHOST_API QString ToPlatformPath(const QString& path);
VLHOST_API QString ToPackagePath(const QString& path);

// The last component of `path`. Asked for the backslash, both separators split; trailing separators do not count.
VLHOST_API QString GetLastPathItem(const QString& path, QChar separator);

// Splits `path` against `base`, folder by folder: `first` is the folder that both share, `second` the way up from the
// base to it ("..\" each, empty inside the base), `third` the rest of the path, so that `second` + `third` is the path
// relative to the base. Without a common root `first` and `second` are empty and `third` is the whole path.
VLHOST_API void ExtractRelPath(const QString& base, const QString& path, QChar separator, QString& first,
                               QString& second, QString& third);

// Joins a directory and further components with one backslash between two of them. Empty components add nothing.
VLHOST_API QString JoinFilePath(const QString& base, std::initializer_list<QString> parts);

// The directory part of a path, without its trailing separator (but for a root); empty for a bare file name.
VLHOST_API QString ExtractFileDir(const QString& path);
VLHOST_API QString ExtractFileName(const QString& path);

// The path with its last extension, dot included, replaced by `extension` (".xml"; empty removes it).
VLHOST_API QString ChangeFileExt(const QString& path, const QString& extension);

// Expands %NAME% by the process environment. What is not set stays as it stands.
VLHOST_API QString ExpandEnvStrings(const QString& text);

// The value of an environment variable; empty when it is not set.
VLHOST_API QString GetEnvironment(const char* name);

// True for a file (a link to one included), false for a directory. Empty paths are nothing.
VLHOST_API bool FileExists(const QString& path);
VLHOST_API bool DirectoryExists(const QString& path);

// Makes a directory with everything above it. Throws TFileError.
VLHOST_API void ForceDirectories(const QString& path);

// The whole content. Throws TFileError.
VLHOST_API QByteArray ReadFile(const QString& path);

// Replaces the file by `content` in one step (see TFileReplacer). Throws TFileError.
VLHOST_API void WriteFile(const QString& path, QByteArrayView content);

// Copies a file. A new target gets the source's permissions; an existing one is replaced in one step and keeps its own,
// or is left alone and false returned when `overwrite` is false. Throws TFileError.
VLHOST_API bool CopyFileTo(const QString& source, const QString& target, bool overwrite);

// Renames a file or directory; never over something that exists. Throws TFileError.
VLHOST_API void RenameFileTo(const QString& source, const QString& target);

// Deletes a file, silently when there is none. Throws TFileError.
VLHOST_API void DeleteFileAt(const QString& path);

// A path in the temporary directory that no file had when it was made; the empty file is there, so that the name stays
// ours. `extension` includes its dot. Throws TFileError.
VLHOST_API QString GetTemporaryFilename(const QString& extension);

// The text that every file error has: "PATH" kann nicht ACTION werden (REASON). `action` is a participle ("gelesen").
VLHOST_API QString FileErrorText(const QString& path, const QString& action, const QString& reason);
