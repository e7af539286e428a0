// An add-in that refuses to start, and says why.
#include <cwchar>

extern "C" __declspec(dllexport) int user_initialize_plus(int, char**, char*, char*, wchar_t* error) {
  std::wcscpy(error, L"no licence");
  return -1;
}

extern "C" __declspec(dllexport) void user_terminate_plus() {}
