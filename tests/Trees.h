#pragma once

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
  for (int i = 0; i < tree.Fields().Count(); ++i) {
    const auto field = tree.Fields().Field(i);
    text += ToWindows1252(field->Name() + u"=" + field->Value() + u"{").value();
    for (int k = 0; k < field->Parameters().Count(); ++k) {
      const auto parameter = field->Parameters().Parameter(k);
      const String value = ReplaceAll(parameter->Value(), u"\r\n", u"~");
      text += ToWindows1252(parameter->Name() + u"=" + value + u";").value();
    }
    text += "}\n";
  }
  return text;
}

/// @return "name=value" for each field, joined by blanks.
inline std::string Values(const Document& tree) {
  std::string text;
  for (int i = 0; i < tree.Fields().Count(); ++i) {
    const auto field = tree.Fields().Field(i);
    text += (text.empty() ? "" : " ") + ToUtf8(field->Name() + u"=" + field->Value());
  }
  return text;
}

inline void WriteFile(const Path& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string ReadFile(const Path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace quenmar
