// Scanning a batch as large as a request may be and reading ten arguments of each operation, against
// RapidJSON parsing the same bytes into a document and looking the same keys up.
//
// The readers start from decoded text, RapidJSON from the bytes; what the decoding adds is printed beneath.
#include <rapidjson/document.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "addin/server/json_reader.h"
#include "addin/text/utf8.h"

namespace {

constexpr std::size_t kBatchBytes = 262'143;
constexpr int kRounds = 200;

// An operation with ten short arguments.
std::string ShortOperation(int number) {
  const std::string n = std::to_string(number);
  return "\"api_feature_extrude_advanced_" + n + "\":{\"name\":\"Boss " + n + "\",\"sketch_name\":\"SKETCH_" +
         n + "\",\"distance_mm\":" + std::to_string(10 + number % 90) + ".5" +
         ",\"operation\":\"join\",\"direction\":\"positive\",\"taper_deg\":-2.25,\"symmetric\":false"
         ",\"until\":\"blind\",\"offset_mm\":0.125,\"body_name\":\"main body\"}";
}

// The same with a list of forty points among them, as sketches have them; the list itself is not read.
std::string OperationWithPoints(int number) {
  std::string operation = ShortOperation(number);
  std::string points = ",\"points\":[";
  for (int i = 0; i < 40; ++i)
    points += (i == 0 ? "[" : ",[") + std::to_string(i * 3) + ".25,-" + std::to_string(number % 100) + ".5]";
  return operation.insert(operation.rfind(",\"until\""), points + "]");
}

std::string Batch(std::string (*one_operation)(int)) {
  std::string batch = "{\"operations\":{" + one_operation(0);
  for (int i = 1;; ++i) {
    const std::string next = "," + one_operation(i);
    if (batch.size() + next.size() + 2 > kBatchBytes) break;
    batch += next;
  }
  batch += "}}";
  // Blanks behind the last bracket make up the full size for both readers.
  batch.resize(kBatchBytes, ' ');
  return batch;
}

const char* const kTexts[] = {"name", "sketch_name", "operation", "direction", "until", "body_name"};
const wchar_t* const kWideTexts[] = {L"name",      L"sketch_name", L"operation",
                                     L"direction", L"until",       L"body_name"};
const char* const kNumbers[] = {"distance_mm", "taper_deg", "offset_mm"};
const wchar_t* const kWideNumbers[] = {L"distance_mm", L"taper_deg", L"offset_mm"};

// What a reading adds up to, so that both sides are seen to have read the same.
struct Sum {
  std::size_t operations = 0;
  std::size_t characters = 0;
  double numbers = 0;
  bool operator==(const Sum&) const = default;
};

Sum ReadWithOurs(const std::wstring& body) {
  Sum sum;
  vek::OperationList operations;
  std::wstring error;
  vek::ParseOperationsObject(vek::JsonFindAnywhere(body, L"operations"), operations, error);
  for (const auto& [name, arguments] : operations) {
    ++sum.operations;
    for (const wchar_t* const key : kWideTexts)
      sum.characters += vek::JsonReadStringArgument(arguments, key).size();
    for (const wchar_t* const key : kWideNumbers) {
      double number = 0;
      vek::JsonReadNumber(arguments, key, number);
      sum.numbers += number;
    }
    sum.characters += vek::JsonReadBool(arguments, L"symmetric", true) ? 1 : 0;
  }
  return sum;
}

Sum ReadWithRapidJson(const std::string& body) {
  Sum sum;
  rapidjson::Document document;
  document.Parse(body.data(), body.size());
  const auto& operations = document["operations"];
  // By iterator: the library's comparison is ambiguous to a range in C++20.
  for (auto operation = operations.MemberBegin();
       operation.operator->() != operations.MemberEnd().operator->(); ++operation) {
    ++sum.operations;
    const auto& arguments = operation->value;
    for (const char* const key : kTexts)
      sum.characters += std::string(arguments[key].GetString(), arguments[key].GetStringLength()).size();
    for (const char* const key : kNumbers) sum.numbers += arguments[key].GetDouble();
    sum.characters += arguments["symmetric"].GetBool() ? 1 : 0;
  }
  return sum;
}

// The median time of one call, in microseconds.
template <typename Call>
double Median(Call call) {
  std::vector<double> times;
  for (int i = 0; i < kRounds; ++i) {
    const auto start = std::chrono::steady_clock::now();
    call();
    times.push_back(
        std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
  }
  std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
  return times[kRounds / 2];
}

// False when the two sides do not read the same.
bool Measure(const char* what, const std::string& bytes) {
  const std::wstring text = vek::DecodeUtf8(bytes);
  if (bytes.size() != kBatchBytes || ReadWithOurs(text) != ReadWithRapidJson(bytes)) return false;
  std::size_t kept = 0;
  const double decoding = Median([&] { kept += vek::DecodeUtf8(bytes).size(); });
  const double ours = Median([&] { kept += ReadWithOurs(text).characters; });
  const double rapidjson = Median([&] { kept += ReadWithRapidJson(bytes).characters; });
  std::printf("%-62s %8.2f       budget     1.00\n", what, ours / rapidjson);
  std::printf("%-62s %8.2f\n", "  with the decoding of its bytes", (ours + decoding) / rapidjson);
  return kept != 0;
}

}  // namespace

int main() {
  if (Measure("scanning a full batch of short arguments, of RapidJSON", Batch(ShortOperation)) &&
      Measure("scanning a full batch with point lists, of RapidJSON", Batch(OperationWithPoints)))
    return 0;
  std::fprintf(stderr, "the two readers disagree\n");
  return 1;
}
