#pragma once

// The 2D editor: a view with zoom, pan, rulers and cross hairs, its scene, and items with
// handles of constant size.

#include <vrn/qt/editor_item.h>
#include <vrn/qt/editor_view.h>
#include <vrn/qt/graphics_scene.h>
#include <vrn/qt/grip_item.h>
