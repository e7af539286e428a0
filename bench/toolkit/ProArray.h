// Expandable arrays.
#pragma once

#include "ProToolkit.h"

typedef void* ProArray;

PRO_TOOLKIT_CALL ProError ProArrayAlloc(int count, int object_size, int reallocation_size, ProArray* array);
PRO_TOOLKIT_CALL ProError ProArrayFree(ProArray* array);
PRO_TOOLKIT_CALL ProError ProArraySizeGet(ProArray array, int* count);
// Adds `count` objects before `index`, or at the end when it is -1.
PRO_TOOLKIT_CALL ProError ProArrayObjectAdd(ProArray* array, int index, int count, void* objects);
