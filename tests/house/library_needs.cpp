#include "tests/house/library_needs.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

#include "tests/house/source_tree.h"

namespace house {
namespace {

constexpr std::string_view kStandardLibraries[] = {"libstdc++.so.", "libm.so.", "libgcc_s.so.",
                                                   "libc.so.", "ld-linux"};

// Whole names of the C library's.
const std::set<std::string_view> kForbiddenNames = {
    // the clock and the calendar of the machine
    "time", "clock", "clock_gettime", "clock_getres", "gettimeofday", "timespec_get", "ftime",
    "times", "localtime", "localtime_r", "gmtime", "gmtime_r", "mktime", "timegm", "tzset",
    "timezone", "tzname", "ctime", "ctime_r", "asctime", "asctime_r", "strftime", "strftime_l",
    "strptime", "wcsftime", "sleep", "usleep", "nanosleep", "clock_nanosleep",
    // the environment
    "getenv", "secure_getenv", "setenv", "unsetenv", "putenv", "clearenv", "environ", "__environ",
    // the locale, and what depends on it
    "setlocale", "newlocale", "uselocale", "duplocale", "freelocale", "localeconv", "nl_langinfo",
    "nl_langinfo_l", "strtod", "strtof", "strtold", "atof", "strcoll", "strxfrm", "tolower",
    "toupper", "isalpha", "isalnum", "isdigit", "isspace", "isupper", "islower", "ispunct",
    "__ctype_b_loc", "__ctype_tolower_loc", "__ctype_toupper_loc", "towlower", "towupper",
    "mbstowcs", "wcstombs", "mbrtowc", "wcrtomb", "printf", "fprintf", "sprintf", "snprintf",
    "vprintf", "vfprintf", "vsprintf", "vsnprintf", "scanf", "fscanf", "sscanf", "vsscanf",
    // files and folders
    "open", "open64", "openat", "openat64", "creat", "creat64", "close", "read", "write", "pread",
    "pread64", "pwrite", "pwrite64", "readv", "writev", "lseek", "lseek64", "fsync", "ftruncate",
    "truncate", "stat", "stat64", "lstat", "lstat64", "fstat", "fstat64", "fstatat", "fstatat64",
    "statx", "statvfs", "access", "faccessat", "chmod", "chown", "link", "symlink", "readlink",
    "realpath", "unlink", "unlinkat", "remove", "rename", "renameat", "mkdir", "mkdirat", "rmdir",
    "opendir", "readdir", "readdir64", "closedir", "chdir", "getcwd", "mmap", "mmap64", "mkstemp",
    "mkdtemp", "tmpfile", "tmpfile64", "fopen", "fopen64", "freopen", "freopen64", "fdopen",
    "fclose", "fread", "fwrite", "fgets", "fputs", "fputc", "fgetc", "fflush", "fseek", "ftell",
    "getline", "puts", "putchar", "putc", "getchar", "stdin", "stdout", "stderr", "perror",
    // other programs, other machines
    "system", "popen", "fork", "vfork", "execv", "execve", "execvp", "execl", "execlp",
    "posix_spawn", "posix_spawnp", "socket", "connect", "dlopen", "dlsym"};

// Beginnings of names: the checked and the versioned forms of those above.
constexpr std::string_view kForbiddenBeginnings[] = {
    "__printf",   "__fprintf",  "__sprintf",   "__snprintf",  "__vprintf",
    "__vfprintf", "__vsprintf", "__vsnprintf", "__isoc99_",   "__isoc23_scanf",
    "__open",     "__read_chk", "__pread",     "__xstat",     "__lxstat",
    "__fxstat",   "__strftime", "__newlocale", "__uselocale", "__duplocale"};

// Pieces of the names that the C++ library's own take in an object file.
constexpr std::string_view kForbiddenPieces[] = {
    "St6chrono3_V212system_clock", "St6chrono3_V212steady_clock", "St6chrono12tzdb", "St6locale",
    "St9use_facet", "St9has_facet", "St13basic_filebuf", "St14basic_ifstream", "St14basic_ofstream",
    "St13basic_fstream", "St10filesystem", "NSt8ios_base4Init", "_ZSt3cin", "_ZSt4cout",
    "_ZSt4cerr", "_ZSt4clog", "_ZSt4wcin", "_ZSt5wcout", "_ZSt5wcerr", "_ZSt5wclog",
    // a stream of text takes up the locale that happens to be set
    "basic_stringstream", "basic_ostringstream", "basic_istringstream", "St13random_device"};

bool StartsWithOneOf(std::string_view name, const auto& beginnings) {
  return std::any_of(std::begin(beginnings), std::end(beginnings),
                     [&](std::string_view beginning) { return name.starts_with(beginning); });
}

bool IsForbidden(std::string_view symbol) {
  return kForbiddenNames.contains(symbol) || StartsWithOneOf(symbol, kForbiddenBeginnings) ||
         std::any_of(
             std::begin(kForbiddenPieces), std::end(kForbiddenPieces),
             [&](std::string_view piece) { return symbol.find(piece) != std::string_view::npos; });
}

}  // namespace

std::vector<std::string> NeededLibraries(const std::string& dynamic_section) {
  std::vector<std::string> libraries;
  for (const std::string& line : Lines(dynamic_section)) {
    const std::size_t open = line.find('[');
    const std::size_t close = line.find(']');
    if (line.find("(NEEDED)") != std::string::npos && close != std::string::npos) {
      libraries.push_back(line.substr(open + 1, close - open - 1));
    }
  }
  return libraries;
}

std::vector<std::string> SymbolNames(const std::string& symbol_list) {
  std::vector<std::string> symbols;
  for (const std::string& line : Lines(symbol_list)) {
    const std::string name = line.substr(line.find_last_of(' ') + 1);
    symbols.push_back(name.substr(0, name.find('@')));
  }
  return symbols;
}

std::vector<std::string> ForeignLibraries(const std::vector<std::string>& libraries) {
  std::vector<std::string> foreign;
  std::copy_if(libraries.begin(), libraries.end(), std::back_inserter(foreign),
               [](const std::string& name) { return !StartsWithOneOf(name, kStandardLibraries); });
  return foreign;
}

std::vector<std::string> ForbiddenSymbols(const std::vector<std::string>& symbols) {
  std::vector<std::string> forbidden;
  std::copy_if(symbols.begin(), symbols.end(), std::back_inserter(forbidden), IsForbidden);
  return forbidden;
}

}  // namespace house
