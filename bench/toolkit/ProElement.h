// Element trees: the recipes of features.
#pragma once

#include "ProCollect.h"

typedef int ProElemId;
typedef struct CreoElement* ProElement;
typedef struct CreoElementPath* ProElempath;

typedef enum ProElempathItemTypes : int { PRO_ELEM_PATH_ITEM_ID = 1 } ProElempathItemtype;

typedef struct CreoElementPathItem {
  ProElempathItemtype type;
  union {
    int elem_id;
  } path_item;
} ProElempathItem;

PRO_TOOLKIT_CALL ProError ProElementAlloc(ProElemId id, ProElement* element);
// Frees the element with all that stands under it.
PRO_TOOLKIT_CALL ProError ProElementFree(ProElement* element);
PRO_TOOLKIT_CALL ProError ProElementIdGet(ProElement element, ProElemId* id);
PRO_TOOLKIT_CALL ProError ProElementChildrenGet(ProElement element, ProElempath path, ProElement** children);

PRO_TOOLKIT_CALL ProError ProElementIntegerSet(ProElement element, int value);
PRO_TOOLKIT_CALL ProError ProElementDoubleSet(ProElement element, double value);
PRO_TOOLKIT_CALL ProError ProElementWstringSet(ProElement element, wchar_t* value);
PRO_TOOLKIT_CALL ProError ProElementReferenceSet(ProElement element, ProReference reference);
PRO_TOOLKIT_CALL ProError ProElementReferencesSet(ProElement element, ProReference* references);
PRO_TOOLKIT_CALL ProError ProElementIntegerGet(ProElement element, int* value);
PRO_TOOLKIT_CALL ProError ProElementDoubleGet(ProElement element, double* value);
// A new reference to what the element refers to, freed with ProReferenceFree.
PRO_TOOLKIT_CALL ProError ProElementReferenceGet(ProElement element, void* options, ProReference* reference);
// From here on the collection belongs to the element's tree.
PRO_TOOLKIT_CALL ProError ProElementCollectionSet(ProElement element, ProCollection collection);
PRO_TOOLKIT_CALL ProError ProElementTransformSet(ProElement element, ProMatrix transform);
PRO_TOOLKIT_CALL ProError ProElementSpecialvalueSet(ProElement element, ProAppData value);
PRO_TOOLKIT_CALL ProError ProElementSpecialvalueGet(ProElement element, void* options, ProAppData* value);

// From here on `element` belongs to `tree`.
PRO_TOOLKIT_CALL ProError ProElemtreeElementAdd(ProElement tree, ProElempath path, ProElement element);
PRO_TOOLKIT_CALL ProError ProElemtreeElementGet(ProElement tree, ProElempath path, ProElement* element);

// Takes an element out of its tree; from here on it is the caller's.
PRO_TOOLKIT_CALL ProError ProElemtreeElementRemove(ProElement tree, ProElempath path, ProElement* element);

// Fill the indices of thread series and screw size in a hole's tree from the host's charts.
PRO_TOOLKIT_CALL ProError ProElementHoleThreadSeriesSet(ProElement tree, ProMdl model, wchar_t* series);
PRO_TOOLKIT_CALL ProError ProElementHoleScrewSizeSet(ProElement tree, ProMdl model, wchar_t* screw_size);

PRO_TOOLKIT_CALL ProError ProElempathAlloc(ProElempath* path);
PRO_TOOLKIT_CALL ProError ProElempathDataSet(ProElempath path, ProElempathItem* items, int count);
PRO_TOOLKIT_CALL ProError ProElempathFree(ProElempath* path);
