// Statuses and the plain types that every other header builds on.
#pragma once

// Under the bench the calls are exported by creobench.dll; callers need no decoration.
#ifdef CREO_BENCH_EXPORTS
#define PRO_TOOLKIT_CALL extern "C" __declspec(dllexport)
#else
#define PRO_TOOLKIT_CALL extern "C"
#endif

typedef enum ProErrors : int {
  PRO_TK_NO_ERROR = 0,
  PRO_TK_GENERAL_ERROR = -1,
  PRO_TK_BAD_INPUTS = -2,
  PRO_TK_USER_ABORT = -3,
  PRO_TK_E_NOT_FOUND = -4,
  PRO_TK_E_FOUND = -5,
  PRO_TK_LINE_TOO_LONG = -6,
  PRO_TK_CONTINUE = -7,
  PRO_TK_BAD_CONTEXT = -8,
  PRO_TK_NOT_IMPLEMENTED = -9,
  PRO_TK_OUT_OF_MEMORY = -10,
  PRO_TK_COMM_ERROR = -11,
  PRO_TK_NO_CHANGE = -12,
  PRO_TK_SUPP_PARENTS = -13,
  PRO_TK_INVALID_DIR = -15,
  PRO_TK_INVALID_FILE = -16,
  PRO_TK_CANT_WRITE = -17,
  PRO_TK_INVALID_TYPE = -18,
  PRO_TK_INVALID_PTR = -19,
  PRO_TK_INVALID_NAME = -22,
  PRO_TK_NOT_EXIST = -23,
  PRO_TK_CANT_OPEN = -24,
} ProError;

typedef enum ProBooleans : int { PRO_B_FALSE = 0, PRO_B_TRUE = 1 } ProBoolean;

typedef void* ProAppData;

#define PRO_NAME_SIZE 32
#define PRO_PATH_SIZE 260
#define PRO_MDLNAME_SIZE 180
#define PRO_EXTENSION_SIZE 32

typedef wchar_t ProName[PRO_NAME_SIZE];
typedef wchar_t ProPath[PRO_PATH_SIZE];
typedef wchar_t ProMdlName[PRO_MDLNAME_SIZE];
typedef wchar_t ProMdlExtension[PRO_EXTENSION_SIZE];

typedef double ProMatrix[4][4];
typedef double Pro3dPnt[3];

// The folder in which the host looks for the add-in's texts, as it was told at the start.
PRO_TOOLKIT_CALL ProError ProToolkitApplTextPathGet(ProPath text_path);
