// The numbers by which the program finds its resources; read by the resource compiler too.
#pragma once

#define ID_LICENCE_TEXT 101
#define ID_PRODUCT_ICON 102
#define ID_ABOUT_DIALOG 103
#define ID_ABOUT_ICON 201
#define ID_ABOUT_NAME 202
#define ID_ABOUT_VERSION 203
#define ID_ABOUT_LICENCE 204
