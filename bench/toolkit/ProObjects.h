// Model items: what has a type, an id and an owner.
#pragma once

#include "ProToolkit.h"

// What an item is: 3 feature, 5 surface, 6 edge, 21 axis, 57 quilt, 62 curve, 66 point, 176 datum plane, and
// the model types.
typedef enum ProTypes : int {
  PRO_TYPE_UNUSED = -1,
  PRO_ASSEMBLY = 1,
  PRO_PART = 2,
  PRO_FEATURE = 3,
  PRO_DRAWING = 4,
  PRO_SURFACE = 5,
  PRO_EDGE = 6,
  PRO_AXIS = 21,
  PRO_CSYS = 25,
  PRO_DIMENSION = 28,
  PRO_QUILT = 57,
  PRO_CURVE = 62,
  PRO_POINT = 66,
  PRO_DATUM_PLANE = 176,
} ProType;

typedef void* ProMdl;
typedef struct CreoSolid* ProSolid;
typedef struct CreoDrawing* ProDrawing;
// A saved view of a model, or a view on a drawing.
typedef struct CreoView* ProView;

typedef struct CreoModelItem {
  ProType type;
  int id;
  ProMdl owner;
} ProModelitem;

typedef ProModelitem ProFeature;
typedef ProModelitem ProGeomitem;

#define PRO_MAX_ASSEM_LEVEL 25

// The way from an assembly down to one of its components: ids of component features, one a level.
typedef struct CreoComponentPath {
  ProMdl owner;
  int comp_id_table[PRO_MAX_ASSEM_LEVEL];
  int table_num;
} ProAsmcomppath;
typedef struct CreoSelection* ProSelection;
typedef struct CreoReference* ProReference;
