// Reads typed fields of a request. What is missing, of another type or not finite makes the request senseless
// and throws BadRequest, whose text says where ("recipe 2, entity 3") and what.
#pragma once

#include <gp_Pnt2d.hxx>
#include <gp_XYZ.hxx>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench::kernel {

class BadRequest : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A JSON object together with the words that name it in a complaint.
class Fields {
 public:
  // Throws when `object` is no JSON object. `object` must outlive the fields.
  Fields(const nlohmann::json& object, std::string where);

  bool Has(const char* key) const { return object_.contains(key); }
  double Number(const char* key) const;
  double Number(const char* key, double otherwise) const;
  int Integer(const char* key) const;
  bool Flag(const char* key, bool otherwise) const;
  std::string Text(const char* key) const;
  const nlohmann::json& Array(const char* key) const;
  std::vector<std::string> Texts(const char* key) const;
  gp_Pnt2d Point2d(const char* key) const;
  gp_XYZ Vector(const char* key) const;
  Fields Object(const char* key) const;

  // A whole number from 0 on; `what` names it in a complaint.
  int AsInteger(const nlohmann::json& value, const std::string& what) const;
  // The two coordinates of a section's point.
  gp_Pnt2d AsPoint2d(const nlohmann::json& value, const std::string& what) const;

  [[noreturn]] void Complain(const std::string& about) const;

 private:
  const nlohmann::json& Member(const char* key) const;
  double AsNumber(const nlohmann::json& value, const std::string& what) const;

  const nlohmann::json& object_;
  std::string where_;
};

}  // namespace bench::kernel
