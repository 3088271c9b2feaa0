#pragma once

#include "Vlshellchange.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <sys/types.h>

// Follows a project from afar: applies the lines of a log to a copy of the tree as it was at the start, strictly, so
// that a line which does not fit the copy is a mistake. The content of what was put comes from the present tree, from
// the path that the item has in the end.
class TReplayer
{
public:
    // `source` is the tree that the lines speak of, `copy` a copy of it as it was before the first line.
    TReplayer(std::filesystem::path source, std::filesystem::path copy);

    // One line without its end, as the log has it.
    void ApplyLine(const std::string& line);
    // Every line of a log; each must end in CR LF.
    void ApplyLog(const std::string& log);
    void Apply(const TShellChange& change);

    // Fetches what was put and compares both trees: names, kinds, contents. `ignored` is the one path in the source
    // that the copy does not have.
    void Finish(const std::filesystem::path& ignored = {});

    // What went wrong, a sentence each; empty when the copy equals the tree.
    const std::vector<std::string>& Mistakes() const { return m_mistakes; }
    // The first of them, for the message of a test.
    std::string Summary() const;

private:
    std::string InCopy(const std::string& path);
    void Rename(const std::string& from, const std::string& to);
    void Put(const std::string& path);
    void Delete(const std::string& path);
    void Check(bool succeeded, const std::string& what);
    void Fetch(const std::filesystem::path& relative);
    void CompareEntry(const std::filesystem::path& relative);
    static std::set<std::filesystem::path> List(const std::filesystem::path& root);

    std::filesystem::path m_source;
    std::filesystem::path m_copy;
    std::set<ino_t> m_put; // the copy's items whose content is to be fetched
    std::vector<std::string> m_mistakes;
};

// A copy with links kept as links; both folders without a separator at the end.
void CopyTree(const std::filesystem::path& from, const std::filesystem::path& to);
