// The input is a request body; each operation found in it is read with every reader.
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "tests/fuzz/fuzz_text.h"

namespace {

using vek::fuzz::Require;

void ReadEverything(const std::wstring& object, const std::wstring& key) {
  std::int32_t index = 0;
  const bool found = vek::JsonFindKey(object, key, index);
  Require(found ? index > 0 && index < static_cast<std::int32_t>(object.size()) : index == -1);
  Require(vek::JsonReadStringArgument(object, key).size() <= object.size());
  Require(vek::JsonReadRaw(object, key).size() <= object.size());
  double number = 0.25;
  if (!vek::JsonReadNumber(object, key, number)) Require(number == 0.25);
  Require(found || vek::JsonReadBool(object, key, true));

  std::vector<std::wstring> texts;
  std::vector<double> numbers;
  const bool is_array = vek::JsonReadStringArray(object, key, texts);
  Require(vek::JsonReadNumberArray(object, key, numbers) == is_array);
  Require(numbers.size() <= texts.size());
  vek::JsonSplitArray(vek::JsonReadRaw(object, key), texts);
  for (const std::wstring& element : texts) Require(!element.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring body = vek::fuzz::Widened(vek::fuzz::Bytes(data, size));
  const std::wstring escaped = L"\"" + vek::JsonEscape(body) + L"\"";
  // Control characters outside the short escapes come back undecoded; the end of the string must not move.
  Require(vek::JsonReadRaw(L"{\"k\":" + escaped + L"}", L"k") == escaped);

  vek::OperationList operations;
  std::wstring error;
  const bool parsed =
      vek::ParseOperationsObject(vek::JsonFindAnywhere(body, L"operations"), operations, error);
  Require(!parsed || (error.empty() && !operations.empty()));
  for (const auto& [name, arguments] : operations) {
    Require(name.size() + arguments.size() <= body.size());
    for (const wchar_t* const key : {L"a", L"", L"name"}) ReadEverything(arguments, key);
  }
  ReadEverything(body, L"a");
  return 0;
}
