#include "bridge/catalogue.h"

#include <algorithm>
#include <stdexcept>

#include "bridge/catalogue_text.h"

namespace vek::bridge {
namespace {

constexpr const char* kLimitWords[] = {"above", "minimum", "maximum", "below"};

std::string Text(const Json& object, std::string_view name) {
  const Json* const member = FindMember(object, name);
  return member != nullptr && !member->is_null() ? member->get<std::string>() : std::string();
}

bool Flag(const Json& object, std::string_view name) {
  const Json* const member = FindMember(object, name);
  return member != nullptr && member->get<bool>();
}

Json Member(const Json& object, std::string_view name, Json otherwise) {
  const Json* const member = FindMember(object, name);
  return member != nullptr ? *member : std::move(otherwise);
}

std::vector<Field> ReadFields(const Json& list) {
  std::vector<Field> fields;
  for (const Json& entry : list) {
    Field& field = fields.emplace_back();
    field.name = entry.at("name").get<std::string>();
    field.type = entry.at("type").get<std::string>();
    field.purpose = entry.at("purpose").get<std::string>();
    field.unit = Text(entry, "unit");
    field.required = Flag(entry, "required");
    field.optional = Flag(entry, "optional");
    field.default_value = Member(entry, "default", nullptr);
    field.values = Member(entry, "values", Json::array()).get<std::vector<std::string>>();
    field.open = Flag(entry, "open");
    field.default_on_other = Flag(entry, "values_default_on_other");
    for (const char* const limit : kLimitWords)
      if (const Json* const value = FindMember(entry, limit)) field.limits[limit] = *value;
    field.fields = ReadFields(Member(entry, "fields", Json::array()));
  }
  return fields;
}

Operation ReadOperation(const Json& entry) {
  Operation operation;
  operation.name = entry.at("name").get<std::string>();
  operation.purpose = entry.at("purpose").get<std::string>();
  operation.notes = Member(entry, "notes", Json::array()).get<std::vector<std::string>>();
  operation.document = entry.at("document").get<std::string>();
  operation.history = Text(entry, "history");
  operation.read_only = entry.at("read_only").get<bool>();
  operation.destructive = entry.at("destructive").get<bool>();
  operation.arguments = ReadFields(entry.at("arguments"));
  operation.data = ReadFields(entry.at("data"));
  operation.data_is_array = Text(entry, "data_is") == "array";
  return operation;
}

}  // namespace

Catalogue::Catalogue(const Json& document) {
  for (const Json& family : document.at("families"))
    for (const Json& entry : family.at("operations")) operations_.push_back(ReadOperation(entry));
}

const Operation* Catalogue::Find(std::string_view name) const {
  const auto found = std::ranges::find(operations_, name, &Operation::name);
  return found == operations_.end() ? nullptr : &*found;
}

const Catalogue& BuiltInCatalogue() {
  static const Catalogue catalogue = [] {
    const auto document = ReadJson(CatalogueText());
    if (!document) throw std::runtime_error("the catalogue is no JSON");
    return Catalogue(*document);
  }();
  return catalogue;
}

}  // namespace vek::bridge
