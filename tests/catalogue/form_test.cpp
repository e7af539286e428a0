// The catalogue's form: what reads it may rely on every field that is named here, and on no other.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/catalogue/catalogue.h"

namespace vek::catalogue {
namespace {

enum class Kind { kText, kTexts, kFlag, kNumber, kRecord, kArray, kAny };

struct Key {
  std::string_view name;
  Kind kind;
  bool required = false;
};

constexpr Key kFamilyKeys[] = {{"name", Kind::kText, true},
                               {"title", Kind::kText, true},
                               {"purpose", Kind::kText, true},
                               {"operations", Kind::kArray, true}};
constexpr Key kOperationKeys[] = {
    {"name", Kind::kText, true},      {"purpose", Kind::kText, true},     {"notes", Kind::kTexts},
    {"document", Kind::kText, true},  {"history", Kind::kAny, true},      {"undo", Kind::kText},
    {"read_only", Kind::kFlag, true}, {"destructive", Kind::kFlag, true}, {"arguments", Kind::kArray, true},
    {"data_is", Kind::kText},         {"data", Kind::kArray, true},       {"messages", Kind::kRecord, true},
    {"example", Kind::kRecord, true}};
constexpr Key kArgumentKeys[] = {{"name", Kind::kText, true}, {"type", Kind::kText, true},
                                 {"unit", Kind::kText},       {"purpose", Kind::kText, true},
                                 {"required", Kind::kFlag},   {"missing", Kind::kText},
                                 {"default", Kind::kAny},     {"values", Kind::kTexts},
                                 {"open", Kind::kFlag},       {"values_default_on_other", Kind::kFlag},
                                 {"above", Kind::kNumber},    {"minimum", Kind::kNumber},
                                 {"maximum", Kind::kNumber},  {"below", Kind::kNumber}};
constexpr Key kDataKeys[] = {{"name", Kind::kText, true}, {"type", Kind::kText, true},
                             {"unit", Kind::kText},       {"purpose", Kind::kText, true},
                             {"optional", Kind::kFlag},   {"fields", Kind::kArray}};
constexpr Key kMessageKeys[] = {{"success", Kind::kTexts, true}, {"failure", Kind::kTexts, true}};
constexpr Key kExampleKeys[] = {{"given", Kind::kArray, true},
                                {"arguments", Kind::kRecord, true},
                                {"message", Kind::kText, true},
                                {"data", Kind::kAny},
                                {"picture", Kind::kFlag}};

const std::set<std::string> kTypes = {
    "number",       "integer",      "boolean",     "string",        "object", "string array",
    "number array", "object array", "point array", "contour array", "matrix", "number or number array"};
const std::set<std::string> kDocuments = {"none", "any", "part", "part or assembly", "assembly", "drawing"};

bool IsText(const Json& value) {
  return value.is_string() && !value.get<std::string>().empty();
}

bool IsOf(const Json& value, Kind kind) {
  switch (kind) {
    case Kind::kText:
      return IsText(value);
    case Kind::kTexts:
      return value.is_array() && std::ranges::all_of(value, IsText);
    case Kind::kFlag:
      return value.is_boolean();
    case Kind::kNumber:
      return value.is_number();
    case Kind::kRecord:
      return value.is_object();
    case Kind::kArray:
      return value.is_array();
    case Kind::kAny:
      return true;
  }
  return false;
}

template <std::size_t n>
void ExpectForm(const Json& record, const Key (&keys)[n], const std::string& where) {
  for (const Key& key : keys) {
    const bool present = record.contains(key.name);
    EXPECT_TRUE(present || !key.required) << where << " has no " << key.name;
    EXPECT_TRUE(!present || IsOf(record.at(std::string(key.name)), key.kind)) << where << ": " << key.name;
  }
  for (const auto& [name, value] : record.items())
    EXPECT_TRUE(std::ranges::count(keys, name, &Key::name)) << where << " has a " << name;
}

template <std::size_t n>
void ExpectFields(const Json& fields, const Key (&keys)[n], const std::string& where) {
  std::set<std::string> names;
  for (const Json& field : fields) {
    const std::string name = where + ", " + field.value("name", "");
    ExpectForm(field, keys, name);
    EXPECT_TRUE(names.insert(field.at("name")).second) << name << " is there twice";
    EXPECT_TRUE(kTypes.contains(field.at("type"))) << name;
    if (field.contains("fields")) ExpectFields(field.at("fields"), keys, name);
  }
}

// Whether an argument takes a value, as far as its words tell.
bool Takes(const Json& argument, const Json& value) {
  return !argument.contains("values") || argument.value("open", false) || value.is_null() ||
         std::ranges::count(argument.at("values"), value) == 1;
}

void ExpectCoherent(const Json& argument, const std::string& where) {
  const bool required = argument.value("required", false);
  EXPECT_EQ(argument.contains("missing"), required) << where;
  EXPECT_NE(argument.contains("default"), required) << where;
  EXPECT_TRUE(Takes(argument, argument.value("default", Json()))) << where;
}

// Whether a call names only arguments that the operation has, with words that it takes.
void ExpectCall(const std::string& operation, const Json& arguments, const std::string& where) {
  const auto entry = std::ranges::find(Entries(), operation, &Entry::name);
  ASSERT_NE(entry, Entries().end()) << where << ": " << operation;
  for (const auto& given : arguments.items()) {
    const Json& known = entry->operation.at("arguments");
    const auto argument =
        std::ranges::find_if(known, [&](const Json& each) { return each.at("name") == given.key(); });
    ASSERT_NE(argument, known.end()) << where << ": " << operation << " has no " << given.key();
    EXPECT_TRUE(Takes(*argument, given.value())) << where << ": " << given.key() << ": " << given.value();
  }
}

TEST(CatalogueForm, IsTheSameInEveryEntry) {
  for (const Json& family : Families()) ExpectForm(family, kFamilyKeys, family.value("name", "a family"));
  for (const auto& [family, name, operation] : Entries()) {
    ExpectForm(operation, kOperationKeys, name);
    ExpectForm(operation.at("messages"), kMessageKeys, name);
    ExpectForm(operation.at("example"), kExampleKeys, name);
    ExpectFields(operation.at("arguments"), kArgumentKeys, name);
    ExpectFields(operation.at("data"), kDataKeys, name);
    EXPECT_TRUE(kDocuments.contains(operation.at("document"))) << name;
    EXPECT_TRUE(operation.at("history").is_null() || IsText(operation.at("history"))) << name;
    for (const Json& argument : operation.at("arguments")) ExpectCoherent(argument, name);
  }
}

TEST(CatalogueForm, TheExamplesCallWhatIsThere) {
  for (const auto& [family, name, operation] : Entries()) {
    const Json& example = operation.at("example");
    for (const Json& step : example.at("given")) ExpectCall(step.at(0), step.at(1), name);
    ExpectCall(name, example.at("arguments"), name);
  }
}

}  // namespace
}  // namespace vek::catalogue
