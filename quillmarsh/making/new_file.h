#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace quillmarsh {

// A file cannot be made. The text tells a user why, and what to do.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// It cannot be made because something stands in its place that is not to be touched.
class PlaceTaken : public FileError {
 public:
  using FileError::FileError;
};

// A file that appears under its name when it is whole. Until then it is written under a name of its
// own in the same folder, and it goes without a trace where it is not finished: with its object, or
// where the user interrupts the program (SIGINT, SIGTERM, SIGHUP, SIGQUIT), which then ends by that
// signal. A signal that is ignored or that somebody else handles is left alone. What a program left
// behind that was killed outright goes when the next file is made in that folder.
//
//   NewFile file("home.csv");
//   std::ofstream(file.path()) << ...;
//   file.TakeFreeName();
class NewFile {
 public:
  // Fails with a FileError where the folder is not there or the name is none of a file. Nothing is
  // made yet.
  explicit NewFile(const std::string& name);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  // Where to write it. Nothing is there at first.
  [[nodiscard]] const std::string& path() const { return path_; }

  // Gives the file, which is closed by now, its name for good. Fails with PlaceTaken where there is
  // anything of that name, also where it has only just come up. Where the file system can neither
  // rename without replacing nor link, the name is first taken by an empty file.
  void TakeFreeName();
  // The same in the place of the file that is there, if there is one: at any moment there is the
  // old one or the new one.
  void TakeName();

 private:
  void MakeLast() const;

  std::string name_;
  std::string folder_;
  std::string path_;
};

// Whether there is anything of that name, a link to nothing included.
bool IsThere(const std::string& name);

}  // namespace quillmarsh
