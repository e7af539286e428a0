// STEP files: what the kernel makes of them, and the models that come of that.
#pragma once

#include <ProMdl.h>

#include <string>
#include <vector>

#include "bench/host/model/model.h"

namespace bench {

struct StepModel {
  struct Component {
    std::size_t model = 0;   // its index in the file's list
    Matrix place = kNoMove;  // millimetres
  };
  std::string name;  // of the product, UTF-8
  bool is_assembly = false;
  std::vector<std::string> shapes;  // of a part, in the kernel's words
  std::vector<Component> components;
};

struct StepFile {
  std::vector<StepModel> models;  // each before those that place it
  std::size_t root = 0;

  ProMdlType Type() const { return models[root].is_assembly ? PRO_MDL_ASSEMBLY : PRO_MDL_PART; }
};

// PRO_TK_E_NOT_FOUND for a file that isn't there, PRO_TK_CANT_OPEN for one that can't be read,
// PRO_TK_INVALID_FILE, told on the console, for one that is no sound STEP file, PRO_TK_COMM_ERROR without the
// kernel's answer.
ProError ReadStepFile(const std::wstring& path, StepFile& file);

// New models in session, in millimetres: the file's root under `name`, which is free, all others under their
// products' names as far as models can bear them, with numbers where they are taken. On failure none of them
// has come into session.
ProError BringIntoSession(const StepFile& file, const std::wstring& name, Model*& root);

}  // namespace bench
