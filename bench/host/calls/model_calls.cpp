// The calls of ProMdl.h.
#include <ProMdl.h>

#include "bench/host/calls/array.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/model/component.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/model_store.h"
#include "bench/host/text.h"

using namespace bench;

ProError ProMdlCurrentGet(ProMdl* model) {
  HOST_CALL() {
    if (!model) return PRO_TK_BAD_INPUTS;
    Model* current = TheHost().CurrentModel();
    *model = current;
    return current ? PRO_TK_NO_ERROR : PRO_TK_BAD_CONTEXT;
  };
}

ProError ProMdlTypeGet(ProMdl model, ProMdlType* type) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (!type) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    *type = found->type;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMdlMdlnameGet(ProMdl model, ProMdlName name) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (!name) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    return CopyOut(found->name, *reinterpret_cast<ProMdlName*>(name)) ? PRO_TK_NO_ERROR
                                                                      : PRO_TK_LINE_TOO_LONG;
  };
}

ProError ProMdlDirectoryPathGet(ProMdl model, ProPath directory) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (!directory) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    if (found->directory.empty()) return PRO_TK_E_NOT_FOUND;
    return CopyOut(found->directory, *reinterpret_cast<ProPath*>(directory)) ? PRO_TK_NO_ERROR
                                                                             : PRO_TK_LINE_TOO_LONG;
  };
}

ProError ProMdlModificationVerify(ProMdl model, ProBoolean* modified) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (!modified) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    *modified = found->modified ? PRO_B_TRUE : PRO_B_FALSE;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMdlToModelitem(ProMdl model, ProModelitem* item) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (!item) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    *item = {static_cast<ProType>(found->type), 0, model};
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMdlDisplay(ProMdl model) {
  HOST_CALL(model) {
    Model* found = nullptr;
    return Resolve(model, found);
  };
}

ProError ProMdlWindowGet(ProMdl model, int* window) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (!window) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    const auto shown_in = TheHost().windows.WindowOf(*found);
    if (!shown_in) return PRO_TK_E_NOT_FOUND;
    *window = *shown_in;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMdlSave(ProMdl model) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (const ProError status = Resolve(model, found)) return status;
    return SaveModel(*found);
  };
}

ProError ProMdlnameBackup(ProMdl model, wchar_t* directory) {
  HOST_CALL(model, static_cast<const wchar_t*>(directory)) {
    Model* found = nullptr;
    if (!directory || !*directory) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    const std::wstring_view wanted = Bounded(directory, PRO_PATH_SIZE);
    if (wanted.size() == PRO_PATH_SIZE) return PRO_TK_LINE_TOO_LONG;
    return BackUpModel(*found, wanted);
  };
}

ProError ProMdlErase(ProMdl model) {
  HOST_CALL(model) {
    Model* found = nullptr;
    if (const ProError status = Resolve(model, found)) return status;
    // An assembly in session would lose what it places, a drawing what it shows.
    if (const Model* user = UserOf(*found)) {
      TheHost().announcements.Say("refused: " + ToUtf8(user->name) + " places " + ToUtf8(found->name));
      return PRO_TK_BAD_CONTEXT;
    }
    if (const Model* user = DrawingOf(*found)) {
      TheHost().announcements.Say("refused: " + ToUtf8(user->name) + " shows " + ToUtf8(found->name));
      return PRO_TK_BAD_CONTEXT;
    }
    TheHost().windows.Drop(*found);
    TheHost().session.Erase(*found);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMdlnameRename(ProMdl model, ProMdlName new_name) {
  HOST_CALL(model, static_cast<const wchar_t*>(new_name)) {
    Model* found = nullptr;
    if (!new_name) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(model, found)) return status;
    const std::wstring name = Upper(Bounded(new_name, PRO_MDLNAME_SIZE));
    if (const ProError status = CheckModelName(name)) return status;
    if (name == found->name) return PRO_TK_NO_CHANGE;
    if (TheHost().session.FindByName(name, found->type)) return PRO_TK_E_FOUND;
    found->name = name;
    found->renamed_since_save = true;
    found->modified = true;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProMdlnameRetrieve(ProMdlName name, ProMdlfileType type, ProMdl* model) {
  HOST_CALL(static_cast<const wchar_t*>(name), static_cast<int>(type)) {
    if (!name || !model) return PRO_TK_BAD_INPUTS;
    *model = nullptr;
    if (!IsModelType(type)) return PRO_TK_INVALID_TYPE;
    const std::wstring_view wanted = Bounded(name, PRO_MDLNAME_SIZE);
    if (wanted.empty()) return PRO_TK_BAD_INPUTS;
    Model* found = nullptr;
    const ProError status = RetrieveModel(wanted, static_cast<ProMdlType>(type), found);
    *model = found;
    return status;
  };
}

ProError ProSessionMdlList(ProMdlType type, ProMdl** models, int* count) {
  HOST_CALL(static_cast<int>(type)) {
    if (!models || !count) return PRO_TK_BAD_INPUTS;
    *models = nullptr;
    *count = 0;
    if (!IsModelType(type)) return PRO_TK_INVALID_TYPE;
    const auto found = TheHost().session.OfType(type);
    if (found.empty()) return PRO_TK_E_NOT_FOUND;
    *models = NewArray(std::vector<ProMdl>(found.begin(), found.end()));
    *count = static_cast<int>(found.size());
    return PRO_TK_NO_ERROR;
  };
}
