#include "cli/TreeJson.h"

#include "text/Charset.h"

namespace quenmar {

namespace {

Json ParametersJson(const Parameters& parameters) {
  Json list = Json::array();
  for (int i = 0; i < parameters.Count(); ++i) {
    const auto parameter = parameters.Parameter(i);
    list.push_back({{"name", ToUtf8(parameter->Name())}, {"value", ToUtf8(parameter->Value())}});
  }
  return list;
}

}  // namespace

std::string TreesJson(std::initializer_list<NamedTree> trees) {
  std::string text;
  Json object = {{"name", ""}, {"value", ""}, {"parameters", Json::array()}};
  for (const auto& [key, tree] : trees) {
    text.append(text.empty() ? "{\n" : ",\n").append(Json(key).dump()).append(": [");
    for (int i = 0; i < tree->Fields().Count(); ++i) {
      const auto field = tree->Fields().Field(i);
      object["name"] = ToUtf8(field->Name());
      object["value"] = ToUtf8(field->Value());
      object["parameters"] = ParametersJson(field->Parameters());
      text.append(i == 0 ? "\n " : ",\n ").append(object.dump());
    }
    text.append("]");
  }
  return text.append("\n}\n");
}

}  // namespace quenmar
