// The entry points by which the host enters the add-in's library. They hand on to the add-in's own start and
// stop, so that the add-in itself needs to know nothing of how a host loads it.

extern "C" int AddinInitialize(int argc, char** argv, char* version, char* build, wchar_t* errbuf);
extern "C" void AddinTerminate();

extern "C" __declspec(dllexport) int user_initialize_plus(int argc, char** argv, char* version, char* build,
                                                          wchar_t* errbuf) {
  return AddinInitialize(argc, argv, version, build, errbuf);
}

extern "C" __declspec(dllexport) void user_terminate_plus() {
  AddinTerminate();
}
