// Entities of a section. Coordinates are in the section's own plane and in model units, angles in radians.
#pragma once

typedef enum Pro2dEntTypes : int {
  PRO_2D_POINT = 1,
  PRO_2D_LINE = 2,
  PRO_2D_CENTER_LINE = 3,
  PRO_2D_ARC = 4,
  PRO_2D_CIRCLE = 5,
  PRO_2D_SPLINE = 8,
  PRO_2D_TEXT = 9,
  PRO_2D_ELLIPSE = 12,
} Pro2dEntType;

typedef double Pro2dPnt[2];

// What every entity record starts with.
typedef struct {
  Pro2dEntType type;
} Pro2dEntdef;

typedef struct {
  Pro2dEntType type;
  Pro2dPnt pnt;
} Pro2dPntdef;

typedef struct {
  Pro2dEntType type;
  Pro2dPnt end1;
  Pro2dPnt end2;
} Pro2dLinedef;

typedef struct {
  Pro2dEntType type;
  Pro2dPnt end1;
  Pro2dPnt end2;
} Pro2dClinedef;

typedef struct {
  Pro2dEntType type;
  Pro2dPnt center;
  double start_angle;
  double end_angle;
  double radius;
} Pro2dArcdef;

typedef struct {
  Pro2dEntType type;
  Pro2dPnt center;
  double radius;
} Pro2dCircledef;

typedef struct {
  Pro2dEntType type;
  unsigned int tangency_type;
  double start_tang_ang;
  double end_tang_ang;
  unsigned int n_points;
  Pro2dPnt* point_arr;
} Pro2dSplinedef;

typedef struct {
  Pro2dEntType type;
  Pro2dPnt origin;
  double x_radius;
  double y_radius;
} Pro2dEllipsedef;

// A text that fills the box between two corners. An empty font is the host's own.
typedef struct {
  Pro2dEntType type;
  Pro2dPnt corner1;
  Pro2dPnt corner2;
  wchar_t text[256];
  wchar_t font[256];
} Pro2dTextdef;
