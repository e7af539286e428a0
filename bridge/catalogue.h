// The operations as catalogue/operations.json describes them, taken apart once at the start.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bridge/json.h"

namespace vek::bridge {

// An argument, or a field of a result's data.
struct Field {
  std::string name;
  std::string type;  // a word of field_types.h
  std::string unit;  // empty where it has none
  std::string purpose;
  bool required = false;
  bool optional = false;  // of the data: not there in every result
  Json default_value;     // null where there is none
  std::vector<std::string> values;
  bool open = false;              // whether others than `values` are taken as well
  bool default_on_other = false;  // whether others than `values` are taken for the default
  Json limits = Json::object();   // above, minimum, maximum, below, as far as there are
  std::vector<Field> fields;      // of an object of the data, or of the objects of an array
};

struct Operation {
  std::string name;
  std::string purpose;
  std::vector<std::string> notes;
  std::string document;  // what has to be active
  std::string history;   // what it puts on the undo history; empty for nothing
  bool read_only = false;
  bool destructive = false;
  std::vector<Field> arguments;
  std::vector<Field> data;  // of an element, where the data is an array
  bool data_is_array = false;
};

class Catalogue {
 public:
  // Throws when the document has not the form of the catalogue.
  explicit Catalogue(const Json& document);

  const std::vector<Operation>& operations() const { return operations_; }

  // Null for a name that is not in it.
  const Operation* Find(std::string_view name) const;

 private:
  std::vector<Operation> operations_;
};

// The catalogue that was compiled into the program.
const Catalogue& BuiltInCatalogue();

}  // namespace vek::bridge
