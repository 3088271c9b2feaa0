// storm FOLDER SEED COUNT: so many random operations on files and folders below FOLDER, as several of these programs at
// once would be a project's worst day. Operations that meet nothing do not count. Says how many failed on the way.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{

constexpr int FolderNames = 4;
constexpr int FileNames = 12;
constexpr int MaxDepth = 3;
constexpr size_t MaxCopied = 60;

class TStorm
{
public:
    TStorm(fs::path root, unsigned seed) : m_root(std::move(root)), m_random(seed), m_seed(seed) {}

    // Whether the operation changed anything.
    bool Step()
    {
        switch (Below(16)) {
        case 0:
        case 1:
        case 2:
            return Write(RandomFile(), std::ios::trunc);
        case 3:
        case 4:
            return Write(RandomFile(), std::ios::app);
        case 5:
            return Succeeds(mkdir(RandomFolder().c_str(), 0777));
        case 6:
        case 7:
            return Rename(RandomFile(), RandomFile());
        case 8:
            return Rename(RandomFolder(), RandomFolder());
        case 9:
            return Succeeds(unlink(RandomFile().c_str()));
        case 10:
            return SafeSave(RandomFile());
        case 11:
            return Chain(RandomFile());
        case 12:
            return Swap(RandomFile(), RandomFile());
        case 13:
            return Exchange();
        case 14:
            return CopyFolder(RandomFolder(), RandomFolder());
        default:
            return Below(4) == 0 ? RemoveFolder(RandomFolder()) : Link(RandomFile());
        }
    }

private:
    int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(m_random); }

    static bool Succeeds(int result) { return result == 0; }

    std::string RandomParent()
    {
        std::string path = m_root.string();
        for (int depth = Below(MaxDepth); depth > 0; --depth)
            path += "/ordner " + std::to_string(Below(FolderNames));
        return path;
    }

    std::string RandomFolder() { return RandomParent() + "/ordner " + std::to_string(Below(FolderNames)); }
    std::string RandomFile() { return RandomParent() + "/Stück \"" + std::to_string(Below(FileNames)) + "\".txt"; }

    bool Write(const std::string& path, std::ios::openmode mode)
    {
        std::ofstream stream(path, std::ios::binary | mode);
        for (int count = Below(20); count >= 0 && stream; --count)
            stream << m_random() << '\n';
        return static_cast<bool>(stream);
    }

    static bool Rename(const std::string& from, const std::string& to)
    {
        return from != to && Succeeds(rename(from.c_str(), to.c_str()));
    }

    bool SafeSave(const std::string& path)
    {
        const std::string temporary = path + "." + std::to_string(m_seed) + ".tmp";
        return Write(temporary, std::ios::trunc) && Rename(temporary, path);
    }

    bool Chain(const std::string& path)
    {
        return Rename(path, path + ".b") && Rename(path + ".b", path + ".c") && Rename(path + ".c", path);
    }

    static bool Swap(const std::string& first, const std::string& second)
    {
        const std::string between = first + ".swap";
        return Rename(first, between) && Rename(second, first) && Rename(between, second);
    }

    bool Exchange()
    {
        const bool areFolders = Below(2) == 0;
        const std::string first = areFolders ? RandomFolder() : RandomFile();
        const std::string second = areFolders ? RandomFolder() : RandomFile();
        return Succeeds(renameat2(AT_FDCWD, first.c_str(), AT_FDCWD, second.c_str(), RENAME_EXCHANGE));
    }

    bool Link(const std::string& path)
    {
        return Succeeds(symlink(("ziel " + std::to_string(Below(1000))).c_str(), path.c_str()));
    }

    // Others write and remove at the same time, so any of this may fail on the way.
    static bool CopyFolder(const std::string& from, const std::string& to)
    {
        std::error_code error;
        size_t count = 0;
        for (fs::recursive_directory_iterator entry(from, error), end; !error && entry != end; entry.increment(error))
            ++count;
        if (error || count > MaxCopied || fs::exists(to, error) || to.rfind(from, 0) == 0)
            return false;
        fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
        return true;
    }

    static bool RemoveFolder(const std::string& path)
    {
        std::error_code error;
        return fs::remove_all(path, error) > 0 && !error;
    }

    fs::path m_root;
    std::mt19937 m_random;
    unsigned m_seed;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fputs("usage: storm FOLDER SEED COUNT\n", stderr);
        return 2;
    }
    TStorm storm(argv[1], static_cast<unsigned>(std::atoi(argv[2])));
    long failed = 0;
    for (long left = std::atol(argv[3]); left > 0;) {
        if (storm.Step())
            --left;
        else
            ++failed;
    }
    std::printf("%ld\n", failed);
    return 0;
}
