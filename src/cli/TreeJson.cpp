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

Json FieldsJson(const Document& tree) {
  Json list = Json::array();
  for (int i = 0; i < tree.Fields().Count(); ++i) {
    const auto field = tree.Fields().Field(i);
    list.push_back({{"name", ToUtf8(field->Name())},
                    {"value", ToUtf8(field->Value())},
                    {"parameters", ParametersJson(field->Parameters())}});
  }
  return list;
}

}  // namespace quenmar
