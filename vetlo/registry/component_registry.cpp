#include "vetlo/registry/component_registry.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "vetlo/registry/trusted_file.h"

namespace vetlo {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void RaiseErrno(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

// ---- the text of the registry

// A section as it stands: its lines, the one with its name first. What stands before all sections
// is one without a name.
struct Section {
  std::string name;
  std::string text;
};

constexpr std::array<std::pair<std::string_view, std::string ComponentRecord::*>, 5> kKeys = {{
    {"ProgID", &ComponentRecord::prog_id},
    {"InprocServer", &ComponentRecord::library},
    {"TypeLib", &ComponentRecord::type_library},
    {"Description", &ComponentRecord::text},
    {"Version", &ComponentRecord::version},
}};

// A line end or a backslash in a value is written as two characters.
std::string Escaped(std::string_view value) {
  std::string text;
  for (const char c : value) {
    if (c == '\n') {
      text += "\\n";
    } else if (c == '\\') {
      text += "\\\\";
    } else {
      text += c;
    }
  }
  return text;
}

std::string Unescaped(std::string_view text) {
  std::string value;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool pair = text[at] == '\\' && at + 1 < text.size();
    if (pair) {
      ++at;
    }
    value += pair && text[at] == 'n' ? '\n' : text[at];
  }
  return value;
}

// Takes the first line off a text, its end included.
std::string_view NextLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line =
      text.substr(0, end == std::string_view::npos ? text.size() : end + 1);
  text.remove_prefix(line.size());
  return line;
}

std::string_view WithoutLineEnd(std::string_view line) {
  return line.ends_with('\n') ? line.substr(0, line.size() - 1) : line;
}

// A name that is damaged is the whole line, which no class has.
std::string SectionName(std::string_view line) {
  const std::string_view words = line.substr(0, line.find_last_not_of(" \t\r\n") + 1);
  return std::string(words.ends_with(']') ? words.substr(1, words.size() - 2) : words);
}

std::vector<Section> SectionsOf(std::string_view text) {
  std::vector<Section> sections(1);
  while (!text.empty()) {
    const std::string_view line = NextLine(text);
    if (line.starts_with('[')) {
      sections.push_back({SectionName(line), {}});
    }
    sections.back().text += line;
  }
  return sections;
}

std::string TextOf(const std::vector<Section>& sections) {
  std::string text;
  for (const Section& section : sections) {
    if (!text.empty() && !text.ends_with('\n')) {
      text += '\n';
    }
    text += section.text;
  }
  return text;
}

Section SectionOf(const ComponentRecord& record) {
  Section section{record.class_id, "[" + record.class_id + "]\n"};
  for (const auto& [key, member] : kKeys) {
    section.text.append(key).append("=").append(Escaped(record.*member)).append("\n");
  }
  return section;
}

// In the place of the section of that name, or else at the end.
void PutIn(std::vector<Section>& sections, Section section) {
  const auto old = std::ranges::find(sections, section.name, &Section::name);
  if (old == sections.end()) {
    sections.push_back(std::move(section));
  } else {
    *old = std::move(section);
  }
}

ComponentRecord RecordOf(const Section& section) {
  ComponentRecord record;
  record.class_id = section.name;
  std::string_view text = section.text;
  while (!text.empty()) {
    const std::string_view line = WithoutLineEnd(NextLine(text));
    for (const auto& [key, member] : kKeys) {
      if (line.starts_with(key) && line.substr(key.size()).starts_with('=')) {
        record.*member = Unescaped(line.substr(key.size() + 1));
      }
    }
  }
  return record;
}

// ---- its file

// A registry has a few lines for each component of a user.
constexpr std::int64_t kMostBytes = 1 << 20;

// Empty where there is no file.
std::string ReadRegistry(const std::string& file) {
  const Descriptor in = OpenTrusted(file, kMostBytes);
  std::string text;
  std::array<char, 4096> piece;
  ssize_t size = 0;
  while (in.IsOpen() && (size = read(in.number(), piece.data(), piece.size())) > 0) {
    text.append(piece.data(), static_cast<std::size_t>(size));
    if (std::cmp_greater(text.size(), kMostBytes)) {
      throw NotTrusted(EFBIG, file + " does not end");
    }
  }
  if (size < 0) {
    RaiseErrno("cannot read " + file);
  }
  return text;
}

void WriteAll(int file, std::string_view text, const std::string& name) {
  while (!text.empty()) {
    const ssize_t written = write(file, text.data(), text.size());
    if (written < 0 && errno != EINTR) {
      RaiseErrno("cannot write " + name);
    }
    text.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
  }
}

// The new text under a name of its own; removed again unless it takes the registry's. One that a
// program left behind when it was killed is written over: the folder is locked.
class FileBeside {
 public:
  explicit FileBeside(const std::string& file)
      : file_(file), name_(file + ".new"), out_(OpenNew(name_, ModeOf(file))) {
    if (out_.number() < 0) {
      RaiseErrno("cannot write beside " + file);
    }
  }
  ~FileBeside() {
    if (!taken_over_) {
      unlink(name_.c_str());
    }
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void Write(std::string_view text) {
    WriteAll(out_.number(), text, name_);
    if (fsync(out_.number()) != 0) {
      RaiseErrno("cannot write " + name_);
    }
  }
  void TakeOver() {
    if (rename(name_.c_str(), file_.c_str()) != 0) {
      RaiseErrno("cannot replace " + file_);
    }
    taken_over_ = true;
  }

 private:
  static constexpr mode_t kOwnerAlone = 0600;

  static mode_t ModeOf(const std::string& file) {
    struct stat facts = {};
    return stat(file.c_str(), &facts) == 0 ? facts.st_mode & 0777 : kOwnerAlone;
  }
  static int OpenNew(const std::string& name, mode_t mode) {
    unlink(name.c_str());
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerAlone);
    if (file >= 0) {
      fchmod(file, mode);
    }
    return file;
  }

  const std::string& file_;
  std::string name_;
  Descriptor out_;
  bool taken_over_ = false;
};

// Makes the folders that are missing, for this user alone; those that were made go again where the
// registry could not be written.
class MadeFolders {
 public:
  explicit MadeFolders(const fs::path& folder) {
    std::vector<fs::path> missing;
    for (fs::path at = folder; !at.empty() && !fs::exists(at); at = at.parent_path()) {
      missing.push_back(at);
    }
    made_.reserve(missing.size());  // so that none is made that cannot be noted
    for (auto at = missing.rbegin(); at != missing.rend(); ++at) {
      Make(std::move(*at));
    }
  }
  ~MadeFolders() {
    if (!kept_) {
      RemoveAgain();
    }
  }
  MadeFolders(const MadeFolders&) = delete;
  MadeFolders& operator=(const MadeFolders&) = delete;
  void Keep() { kept_ = true; }

 private:
  // One that another program has just made is not this one's to remove.
  void Make(fs::path folder) {
    if (mkdir(folder.c_str(), 0700) == 0) {
      made_.push_back(std::move(folder));
    } else if (errno != EEXIST) {
      const int error = errno;
      RemoveAgain();
      errno = error;
      RaiseErrno("cannot make the folder " + folder.string());
    }
  }
  void RemoveAgain() {
    for (auto at = made_.rbegin(); at != made_.rend(); ++at) {
      rmdir(at->c_str());
    }
  }

  std::vector<fs::path> made_;
  bool kept_ = false;
};

// Of several programs that change the registry at once each waits for the one before.
class FolderLock {
 public:
  explicit FolderLock(const std::string& folder)
      : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (folder_.number() < 0 || flock(folder_.number(), LOCK_EX) != 0) {
      RaiseErrno("cannot use the folder " + folder);
    }
  }
  // What took a name in the folder has it for good.
  void Settle() const { fsync(folder_.number()); }

 private:
  Descriptor folder_;
};

void Replace(const std::string& file, const std::string& text, const FolderLock& lock) {
  if (text.empty()) {
    if (unlink(file.c_str()) != 0 && errno != ENOENT) {
      RaiseErrno("cannot remove " + file);
    }
  } else {
    FileBeside beside(file);
    beside.Write(text);
    beside.TakeOver();
  }
  lock.Settle();
}

// The file itself where somebody keeps it elsewhere behind a link.
std::string WithoutLinks(const std::string& file) {
  std::error_code error;
  return fs::is_symlink(file, error) ? fs::weakly_canonical(file).string() : file;
}

void RequirePlace(const std::string& file) {
  if (file.empty()) {
    throw std::system_error(ENOENT, std::generic_category(),
                            "no home for the registry of components: set HOME or XDG_DATA_HOME");
  }
}

// Where a library was loaded from: a name that is not absolute counts from the folder that was the
// present one then.
fs::path FolderOfLoaded(const char* library) {
  void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
  if (handle == nullptr) {
    return fs::absolute(library).parent_path();
  }
  std::array<char, PATH_MAX> folder = {};
  const bool told = dlinfo(handle, RTLD_DI_ORIGIN, folder.data()) == 0;
  dlclose(handle);
  return told ? fs::path(folder.data()) : fs::absolute(library).parent_path();
}

std::string AbsoluteSetting(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value == '/' ? value : "";
}

}  // namespace

std::string RegistryFile() {
  std::string folder = AbsoluteSetting("XDG_DATA_HOME");
  if (folder.empty()) {
    const std::string home = AbsoluteSetting("HOME");
    folder = home.empty() ? "" : home + "/.local/share";
  }
  return folder.empty() ? "" : folder + "/vetlo/components.ini";
}

std::string LibraryFileOf(const void* address) {
  Dl_info info = {};
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) {
    throw std::system_error(ENOENT, std::generic_category(), "the library has no file");
  }
  const fs::path file = info.dli_fname;
  const fs::path folder = file.is_absolute() ? file.parent_path() : FolderOfLoaded(info.dli_fname);
  return (fs::canonical(folder) / file.filename()).string();
}

void RequireRegistryPlace(const std::string& file) { RequireTrustedPlace(file, kMostBytes); }

std::optional<ComponentRecord> FindComponent(const std::string& file, std::string_view class_id) {
  for (const Section& section : SectionsOf(ReadRegistry(file))) {
    if (section.name == class_id) {
      return RecordOf(section);
    }
  }
  return std::nullopt;
}

void WriteComponent(const std::string& registry, const ComponentRecord& record) {
  RequirePlace(registry);
  const std::string file = WithoutLinks(registry);
  const std::string folder = fs::path(file).parent_path();
  MadeFolders folders(folder);
  RequireRegistryPlace(registry);
  const FolderLock lock(folder);
  const std::string old_text = ReadRegistry(registry);
  std::vector<Section> sections = SectionsOf(old_text);
  PutIn(sections, SectionOf(record));
  const std::string text = TextOf(sections);
  if (text != old_text) {
    Replace(file, text, lock);
  }
  folders.Keep();
}

void RemoveComponent(const std::string& registry, std::string_view class_id) {
  RequirePlace(registry);
  const std::string file = WithoutLinks(registry);
  if (access(file.c_str(), F_OK) != 0) {
    if (errno == ENOENT || errno == ENOTDIR) {
      return;
    }
    RaiseErrno("cannot reach " + file);
  }
  RequireRegistryPlace(registry);
  const FolderLock lock(fs::path(file).parent_path());
  std::vector<Section> sections = SectionsOf(ReadRegistry(registry));
  if (std::erase_if(sections, [&](const Section& section) { return section.name == class_id; }) !=
      0) {
    Replace(file, TextOf(sections), lock);
  }
}

}  // namespace vetlo
