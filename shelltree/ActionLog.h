#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

// The file of the action log. Lines are only ever appended; the file is opened and closed for each of them, so that
// nobody finds it locked and everything written is there for others at once. Belongs to the file tree, one for each
// path.
class TActionLog
{
public:
    // Nothing is opened or made yet.
    explicit TActionLog(const QString& path);

    // Appends a line with its line end; makes the file when there is none. Throws TFileError; the file then ends with
    // the last complete line, or will when the next one is appended. Never blocks, also not on what is no file.
    void Append(const QByteArray& line);

private:
    // A place in a file, to tell whether somebody else wrote there.
    struct TPlace
    {
        dev_t Device = 0;
        ino_t Inode = 0;
        off_t Size = -1;

        bool operator==(const TPlace&) const = default;
    };

    class TFile;

    QByteArray RepairEnd(TFile& file, TPlace& place) const;
    void Cut(TFile& file, TPlace& place, off_t size) const;
    bool IsOwnHalfLine(TFile& file, const TPlace& place) const;
    [[noreturn]] void Fail(const QString& reason) const;

    QString m_path;
    TPlace m_end;          // where our last line ended
    QByteArray m_halfLine; // what was to be written there and was not written whole
};
