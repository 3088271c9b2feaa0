#include "Replayer.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{

ino_t InodeOf(const std::string& path)
{
    struct stat status
    {};
    return lstat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

std::string Content(const fs::path& path)
{
    if (fs::is_symlink(fs::symlink_status(path)))
        return fs::read_symlink(path).string();
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

bool IsItem(const fs::file_status& status)
{
    return fs::is_regular_file(status) || fs::is_symlink(status);
}

} // namespace

TReplayer::TReplayer(fs::path source, fs::path copy) : m_source(std::move(source)), m_copy(std::move(copy)) {}

void TReplayer::Check(bool succeeded, const std::string& what)
{
    if (!succeeded)
        m_mistakes.push_back(what + ": " + std::strerror(errno));
}

std::string TReplayer::InCopy(const std::string& path)
{
    const std::string root = m_source.string() + "/";
    if (path.compare(0, root.size(), root) != 0) {
        m_mistakes.push_back("not below the root: " + path);
        return m_copy.string() + "/?";
    }
    return m_copy.string() + "/" + path.substr(root.size());
}

void TReplayer::ApplyLine(const std::string& line)
{
    const auto quoted = [&line](size_t prefix) { return line.substr(prefix, line.size() - prefix - 1); };
    const auto isForm = [&line](const char* prefix) { return line.rfind(prefix, 0) == 0 && line.back() == '"'; };
    if (isForm("PUT \"")) {
        Put(quoted(5));
    } else if (isForm("DEL \"")) {
        Delete(quoted(5));
    } else if (isForm("MKDIR \"")) {
        Check(mkdir(InCopy(quoted(7)).c_str(), 0777) == 0, line);
    } else if (isForm("RMDIR \"")) {
        Check(rmdir(InCopy(quoted(7)).c_str()) == 0, line);
    } else if (const size_t middle = line.find("\" \""); isForm("REN \"") && middle != std::string::npos) {
        Rename(line.substr(5, middle - 5), line.substr(middle + 3, line.size() - middle - 4));
    } else {
        m_mistakes.push_back("no form of a line: " + line);
    }
}

void TReplayer::ApplyLog(const std::string& log)
{
    size_t begin = 0;
    while (begin < log.size()) {
        const size_t end = log.find("\r\n", begin);
        if (end == std::string::npos) {
            m_mistakes.push_back("an unfinished line: " + log.substr(begin));
            return;
        }
        ApplyLine(log.substr(begin, end - begin));
        begin = end + 2;
    }
}

void TReplayer::Apply(const TShellChange& change)
{
    const std::string path = change.Path.toStdString();
    switch (change.Kind) {
    case scItemRenamed:
    case scFolderRenamed:
        Rename(path, change.NewPath.toStdString());
        break;
    case scItemCreated:
    case scItemUpdated:
        Put(path);
        break;
    case scItemDeleted:
        Delete(path);
        break;
    case scFolderCreated:
        Check(mkdir(InCopy(path).c_str(), 0777) == 0, "MKDIR " + path);
        break;
    case scFolderRemoved:
        Check(rmdir(InCopy(path).c_str()) == 0, "RMDIR " + path);
        break;
    }
}

void TReplayer::Rename(const std::string& from, const std::string& to)
{
    const std::string target = InCopy(to);
    m_put.erase(InodeOf(target));
    Check(rename(InCopy(from).c_str(), target.c_str()) == 0, "REN " + from + " " + to);
}

void TReplayer::Put(const std::string& path)
{
    const std::string target = InCopy(path);
    if (InodeOf(target) == 0) {
        const int descriptor = open(target.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
        Check(descriptor >= 0, "PUT " + path);
        if (descriptor >= 0)
            close(descriptor);
    }
    if (fs::is_directory(fs::symlink_status(target)))
        m_mistakes.push_back("PUT onto a folder: " + path);
    else
        m_put.insert(InodeOf(target));
}

void TReplayer::Delete(const std::string& path)
{
    const std::string target = InCopy(path);
    m_put.erase(InodeOf(target));
    Check(unlink(target.c_str()) == 0, "DEL " + path);
}

std::set<fs::path> TReplayer::List(const fs::path& root)
{
    std::set<fs::path> found;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
        const fs::file_status status = entry.symlink_status();
        if (IsItem(status) || fs::is_directory(status))
            found.insert(entry.path().lexically_relative(root));
    }
    return found;
}

void TReplayer::Fetch(const fs::path& relative)
{
    std::error_code error;
    fs::remove(m_copy / relative, error);
    fs::copy(m_source / relative, m_copy / relative, fs::copy_options::copy_symlinks, error);
    if (error)
        m_mistakes.push_back("not there to be fetched: " + relative.string());
}

void TReplayer::CompareEntry(const fs::path& relative)
{
    const fs::file_status source = fs::symlink_status(m_source / relative);
    const fs::file_status copy = fs::symlink_status(m_copy / relative);
    if (source.type() != copy.type())
        m_mistakes.push_back("another kind: " + relative.string());
    else if (IsItem(source) && Content(m_source / relative) != Content(m_copy / relative))
        m_mistakes.push_back("another content: " + relative.string());
}

void TReplayer::Finish(const fs::path& ignored)
{
    for (const fs::path& relative : List(m_copy)) {
        if (m_put.count(InodeOf((m_copy / relative).string())) > 0)
            Fetch(relative);
    }
    std::set<fs::path> source = List(m_source);
    if (!ignored.empty())
        source.erase(ignored.lexically_relative(m_source));
    for (const fs::path& relative : List(m_copy)) {
        if (source.erase(relative) == 0)
            m_mistakes.push_back("only in the copy: " + relative.string());
        else
            CompareEntry(relative);
    }
    for (const fs::path& relative : source)
        m_mistakes.push_back("missing in the copy: " + relative.string());
}

std::string TReplayer::Summary() const
{
    std::string text;
    for (size_t number = 0; number < m_mistakes.size() && number < 12; ++number)
        text += m_mistakes[number] + "\n";
    return text + std::to_string(m_mistakes.size()) + " mistakes";
}

void CopyTree(const fs::path& from, const fs::path& to)
{
    fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}
