#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <string>

namespace vetlo {

// A file that is read past the engine. Nothing is waited for when it is opened, whatever it is, and
// a link is not followed.
class InputFile {
 public:
  explicit InputFile(const std::string& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  [[nodiscard]] bool IsOpen() const { return file_ >= 0; }
  // Why it is not open, as the system numbers it.
  [[nodiscard]] int Error() const { return error_; }

  // The rest is asked of an open file. What cannot be told or read fails with kStoreUnusable.
  [[nodiscard]] struct stat Facts() const;
  // Reads so many bytes from a place on; false where the file has fewer.
  [[nodiscard]] bool Read(void* bytes, std::size_t size, off_t place) const;

 private:
  int file_;
  int error_;
};

}  // namespace vetlo
