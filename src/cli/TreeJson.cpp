#include "cli/TreeJson.h"

#include <ostream>
#include <string>
#include <utility>

#include "text/Charset.h"

namespace quenmar {

namespace {

void SetParameters(Json& list, const Parameters& parameters) {
  list.clear();
  for (const Parameter& parameter : parameters) {
    list.push_back({{"name", ToUtf8(parameter.Name())}, {"value", ToUtf8(parameter.Value())}});
  }
}

}  // namespace

void PrintTreesJson(std::ostream& out, std::initializer_list<NamedTree> trees) {
  // One object serves every field, and its strings are reached without looking up their keys.
  Json object = {{"name", ""}, {"value", ""}, {"parameters", Json::array()}};
  auto& name = object["name"].get_ref<std::string&>();
  auto& value = object["value"].get_ref<std::string&>();
  Json& parameters = object["parameters"];
  const char* separator = "{\n";
  for (const auto& [key, tree] : trees) {
    out << std::exchange(separator, ",\n") << Json(key).dump() << ": [";
    const char* start = "\n ";
    for (const Field& field : tree->Fields()) {
      name = ToUtf8(field.Name());
      value = ToUtf8(field.Value());
      SetParameters(parameters, field.Parameters());
      out << std::exchange(start, ",\n ") << object.dump();
    }
    out << ']';
  }
  out << "\n}\n";
}

}  // namespace quenmar
