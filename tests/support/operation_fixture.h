// The ground on which operations are tested: the bench host in this process, the kernel behind it, and the
// provider with all operations. Each test gets an empty session and an empty working directory of its own,
// and must end with nothing outstanding in the ledger and no violation.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "addin/server/provider.h"
#include "bench/host/host.h"
#include "bench/host/model/model.h"

namespace vek::support {

class OperationTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // ---- running

  // Runs an operation through the provider, as a batch does.
  CreoMcpOperationResult Run(const std::wstring& name, const std::wstring& arguments = L"{}");
  // The same, with the test failed when the operation fails. Gives its data.
  nlohmann::json Succeed(const std::wstring& name, const std::wstring& arguments = L"{}");
  // The same, with exactly that message and data.
  void ExpectAnswer(const std::wstring& name, const std::wstring& arguments, const std::wstring& message,
                    const std::wstring& data = L"null");
  // The same for an operation that must fail with exactly that message and no data.
  void ExpectFailure(const std::wstring& name, const std::wstring& arguments, const std::wstring& message);

  // ---- models

  // A new empty part or assembly by way of the operations; it is active.
  bench::Model& NewPart();
  bench::Model& NewAssembly();
  // A model put into session behind the operations' back, without a window and not active.
  bench::Model& AddModel(const std::wstring& name, ProMdlType type);
  // The model of the active window.
  bench::Model& Current();

  // A rectangle with those corners on a plane ("XY", "XZ", "YZ" or a datum plane), as a sketch of that name.
  // Millimetres.
  void Rectangle(const std::wstring& sketch, const std::wstring& plane, double x1, double y1, double x2,
                 double y2);
  // A box on the XY plane with a corner in the origin, along the positive axes, made of the sketch "BLOCK".
  // Gives the name of the extrusion.
  std::wstring Block(double width_mm, double height_mm, double depth_mm);

  // ---- what came of it

  // Of the current model: mm³, and the box in mm; 0 and a failed test without a body.
  double Volume();
  double Area();
  bench::Box Outline();
  // The feature of that name, or null.
  bench::Feature* FeatureNamed(const std::wstring& name);

  // ---- the host

  bench::Host& host() { return bench::TheHost(); }
  bench::FaultPlan& faults() { return host().faults; }
  // The names of the toolkit calls since `mark`, a number that `host().journal.Mark()` gave.
  std::vector<std::string> CallsSince(std::uint64_t mark);
  // Those of them that are among `names`, in their order.
  std::vector<std::string> CallsSince(std::uint64_t mark, const std::vector<std::string>& names);

  // The test's own directory, which is the host's working directory as well; gone with the test.
  const std::filesystem::path& directory() const { return directory_; }
  // A path in it, and the same escaped for a JSON text.
  std::wstring Full(const std::wstring& file) const { return (directory_ / file).wstring(); }
  std::wstring JsonPath(const std::wstring& file) const;
  // A file in it; empty when there is none.
  std::string Bytes(const std::wstring& file) const;

 private:
  CreoMcpProvider provider_;
  std::filesystem::path directory_;
};

// A number as it stands in a request.
std::wstring Number(double value);

}  // namespace vek::support
