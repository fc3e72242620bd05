#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vetlo {

// The per-user registry of components: one plain file in which each component has a section. All
// file handling of the component stands in this room.

// What is written of one component.
struct ComponentRecord {
  std::string class_id;  // "{A88191EF-...}", the section's name
  std::string prog_id;
  std::string library;  // the absolute path of the library's file
  std::string type_library;
  std::string text;
  std::string version;

  friend bool operator==(const ComponentRecord&, const ComponentRecord&) = default;
};

// Where the registry lies: below $XDG_DATA_HOME, or $HOME/.local/share. Empty where neither is an
// absolute path.
std::string RegistryFile();

// The absolute path of the library that this address lies in.
std::string LibraryFileOf(const void* address);

// What a registry says decides which code runs: this and those below fail with NotTrusted where it
// could be another user's (trusted_file.h), and with std::system_error where the file cannot be
// read or written. This one asks no more than that, also of a registry that is not there yet.
void RequireRegistryPlace(const std::string& file);

// The record of a class, or nothing where there is none.
std::optional<ComponentRecord> FindComponent(const std::string& file, std::string_view class_id);

// Writes a record in the place of the class's old one, and takes one out. Other components'
// records stay as they are. A new file is written beside the old one and takes its name when it is
// whole, so that nothing is ever half-done; where there is nothing to change nothing is written.
void WriteComponent(const std::string& file, const ComponentRecord& record);
void RemoveComponent(const std::string& file, std::string_view class_id);

}  // namespace vetlo
