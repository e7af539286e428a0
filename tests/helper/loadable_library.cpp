// A library that does nothing: for being loaded by a test, and being in use then.
extern "C" __declspec(dllexport) int Nothing() {
  return 0;
}
