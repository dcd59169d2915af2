#pragma once

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "docmodel/Document.h"
#include "text/Charset.h"

namespace quenmar {

/// @return the fields of a tree, one a line: name=value{parameter=value;...}, CR LF shown as "~".
inline std::string Fields1252(const Document& tree) {
  std::string text;
  const auto bytes = [](StringView view) { return ToWindows1252(view).value(); };
  for (const Field& field : tree.Fields()) {
    text += bytes(field.Name()) + "=" + bytes(field.Value()) + "{";
    for (const Parameter& parameter : field.Parameters()) {
      const String value = ReplaceAll(parameter.Value(), u"\r\n", u"~");
      text += bytes(parameter.Name()) + "=" + bytes(value) + ";";
    }
    text += "}\n";
  }
  return text;
}

/// @return "name=value" for each field, joined by blanks.
inline std::string Values(const Document& tree) {
  std::string text;
  for (const Field& field : tree.Fields()) {
    text += (text.empty() ? "" : " ") + ToUtf8(field.Name()) + "=" + ToUtf8(field.Value());
  }
  return text;
}

/// Writes a file, in a folder that is made if there is none.
inline void WriteFile(const Path& path, std::string_view bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string ReadFile(const Path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace quenmar
