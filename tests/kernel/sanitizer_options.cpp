// What the sanitisers are told in the kernel's tests and in the kernel that these start.

// Where memory comes from is read from the libraries' unwind tables: they keep no frame pointers, and without
// the callers none of the suppressions would match. It makes allocating several times slower, so ./test does
// without it where nothing is suppressed.
extern "C" const char* __asan_default_options() {
  return "fast_unwind_on_malloc=0:malloc_context_size=8";
}

// What the geometry toolkit loses by itself. Each name is that of the function that allocates, so that
// nothing of ours is passed over which only happens to be allocated below it.
extern "C" const char* __lsan_default_suppressions() {
  return
      // The names of the values that a writer's setting can have: kept with the settings until the process
      // ends.
      "leak:^MoniTool_TypedValue::AddEnum(\n"
      // The fields of the editors that the STEP writer sets up once in a process.
      "leak:^IFSelect_Editor::IFSelect_Editor(\n"
      // The components of a direction and the parameters of an edge's curve, left behind by the STEP writer.
      "leak:^GeomToStep_MakeDirection::GeomToStep_MakeDirection(\n"
      "leak:^TopoDSToStep_MakeStepEdge::Init(\n"
      // What the STEP writer notes of a shape that it meets twice: two notes that hold each other.
      "leak:^TopoDSToStep::AddResult(\n"
      // The exception that a signal's handler makes, left behind by the jump out of the handler.
      "leak:^raise$\n";
}
