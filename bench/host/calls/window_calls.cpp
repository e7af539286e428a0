// The calls of ProWindows.h.
#include <ProWindows.h>

#include <string>

#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"
#include "bench/host/text.h"

using namespace bench;

namespace {

constexpr int kCurrentWindow = -1;

}  // namespace

ProError ProObjectwindowMdlnameCreate(ProMdlName name, ProType type, int* window) {
  HOST_CALL(static_cast<const wchar_t*>(name), type) {
    if (!name || !window) return PRO_TK_BAD_INPUTS;
    if (!IsModelType(type)) return PRO_TK_INVALID_TYPE;
    Model* model =
        TheHost().session.FindByName(Bounded(name, PRO_MDLNAME_SIZE), static_cast<ProMdlType>(type));
    if (!model) return PRO_TK_E_NOT_FOUND;
    const auto created = TheHost().windows.Create(*model);
    if (!created) return PRO_TK_E_FOUND;
    *window = *created;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProWindowActivate(int window) {
  HOST_CALL(window) {
    return TheHost().windows.Activate(window) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
  };
}

ProError ProWindowRepaint(int window) {
  HOST_CALL(window) {
    if (window == kCurrentWindow) return PRO_TK_NO_ERROR;
    return TheHost().windows.Exists(window) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
  };
}

ProError ProWindowRefresh(int window) {
  HOST_CALL(window) {
    if (window == kCurrentWindow) return PRO_TK_NO_ERROR;
    return TheHost().windows.Exists(window) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
  };
}

ProError ProWindowDelete(int window) {
  HOST_CALL(window) {
    if (window == WindowList::kBaseWindow) return PRO_TK_BAD_CONTEXT;
    return TheHost().windows.Close(window) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
  };
}

ProError ProWindowCurrentGet(int* window) {
  HOST_CALL() {
    if (!window) return PRO_TK_BAD_INPUTS;
    *window = TheHost().windows.Current();
    return PRO_TK_NO_ERROR;
  };
}

ProError ProWindowBrowserSizeSet(int window, double percent) {
  HOST_CALL(window, percent) {
    if (!TheHost().windows.Exists(window)) return PRO_TK_BAD_INPUTS;
    if (!(percent >= 0.0 && percent <= 100.0)) return PRO_TK_BAD_INPUTS;
    TheHost().windows.browser_percent = percent;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProWindowURLShow(int window, wchar_t* url) {
  HOST_CALL(window, static_cast<const wchar_t*>(url)) {
    if (!url || !*url || !TheHost().windows.Exists(window)) return PRO_TK_BAD_INPUTS;
    TheHost().windows.browser_url = url;
    return PRO_TK_NO_ERROR;
  };
}
