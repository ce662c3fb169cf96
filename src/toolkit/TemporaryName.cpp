#include "toolkit/TemporaryName.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

constexpr std::string_view beginning = ".velloreader-";
constexpr std::string_view ending = ".part";

/// A word of a name: letters, digits, full stops and underscores.
std::string word(std::string text)
{
    constexpr std::size_t longest = 48;
    text.resize(std::min(text.size(), longest));
    for (char& character : text)
        if (std::isalnum(static_cast<unsigned char>(character)) == 0 && character != '.')
            character = '_';
    return text.empty() ? "_" : text;
}

/// This host, as far as numbers of processes mean the same: containers may have its name, and others.
std::string hostName()
{
    std::array<char, 256> name{};
    ::gethostname(name.data(), name.size() - 1);
    struct stat numbers = {};
    ::stat("/proc/self/ns/pid", &numbers);
    return word(name.data()) + "." + std::to_string(numbers.st_ino);
}

/// The job of the batch system that has started this process.
std::string jobName()
{
    for (char const* const variable : {"SLURM_JOB_ID", "PBS_JOBID", "LSB_JOBID", "JOB_ID"})
        if (char const* const job = std::getenv(variable))
            return word(job);
    return "0";
}

/// Tells files of a directory apart by few letters, whatever their names are.
std::string sumOf(std::string const& name)
{
    std::uint64_t sum = 0xcbf29ce484222325U;
    for (char const character : name)
        sum = (sum ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
    return std::to_string(sum);
}

/// The words of a name that beside() has made: host, process, job, a number by chance, the target's sum.
std::vector<std::string> wordsOf(std::string_view name)
{
    bool const isOurs = name.size() > beginning.size() + ending.size() &&
                        name.substr(0, beginning.size()) == beginning &&
                        name.substr(name.size() - ending.size()) == ending;
    std::vector<std::string> words;
    if (!isOurs)
        return words;
    name = name.substr(beginning.size(), name.size() - beginning.size() - ending.size());
    for (std::size_t begin = 0; begin <= name.size();) {
        std::size_t const end = std::min(name.find('-', begin), name.size());
        words.emplace_back(name.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

/// Whether a process has ended with all its threads, and only its parent hasn't asked yet: some never do.
bool hasEnded(pid_t process)
{
    constexpr int fieldsBetween = 16;
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string const text{std::istreambuf_iterator<char>(file), {}};
    std::istringstream fields(text.substr(text.rfind(')') + 1)); // behind the program's name
    std::string state, skipped;
    int threads = 0;
    fields >> state;
    for (int i = 0; i < fieldsBetween; ++i)
        fields >> skipped;
    return fields >> threads && state == "Z" && threads <= 1;
}

bool isGone(std::string const& process)
{
    pid_t number = 0;
    auto const [end, problem] = std::from_chars(process.data(), process.data() + process.size(), number);
    bool const isNumber = problem == std::errc() && end == process.data() + process.size() && number > 0;
    return isNumber && ((::kill(number, 0) != 0 && errno == ESRCH) || hasEnded(number));
}

bool isOld(fs::path const& file)
{
    constexpr std::time_t day = 24 * 60 * 60;
    struct stat status = {};
    return ::lstat(file.c_str(), &status) == 0 && std::time(nullptr) - status.st_mtime > day;
}

/// @param sums of the targets; nothing for all
void removeFrom(fs::path const& directory, std::optional<std::set<std::string>> const& sums)
{
    constexpr std::size_t parts = 5;
    static std::string const host = hostName();
    std::error_code problem;
    for (fs::directory_iterator file(directory, problem); !problem && file != fs::directory_iterator();
         file.increment(problem)) {
        std::vector<std::string> const words = wordsOf(file->path().filename().string());
        if (words.size() != parts || (sums && sums->count(words.back()) == 0))
            continue;
        if ((words[0] == host && isGone(words[1])) || isOld(file->path()))
            ::unlink(file->path().c_str());
    }
}

} // namespace

std::string TemporaryName::beside(std::string const& target)
{
    static std::string const host = hostName();
    static std::string const job = jobName();
    std::random_device random;
    std::string name(beginning);
    name.append(host).append("-").append(std::to_string(::getpid())).append("-").append(job).append("-");
    name.append(std::to_string(random())).append(std::to_string(random())).append("-");
    name.append(sumOf(fs::path(target).filename().string())).append(ending);
    std::size_t const slash = target.rfind('/');
    return (slash != std::string::npos ? target.substr(0, slash + 1) : "./") + name;
}

void TemporaryName::removeAbandoned(std::vector<std::string> const& targets)
{
    std::map<std::string, std::set<std::string>> directories;
    for (std::string const& target : targets) {
        fs::path const path = target;
        directories[path.has_parent_path() ? path.parent_path().string() : "."].insert(
            sumOf(path.filename().string()));
    }
    for (auto const& [directory, sums] : directories)
        removeFrom(directory, sums);
}

void TemporaryName::removeAbandonedIn(std::string const& directory)
{
    removeFrom(directory, std::nullopt);
}
