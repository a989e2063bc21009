// The drawing of a project as a page: a file, or a picture for other programs.
#pragma once

#include "drawing/project_drawing.h"

/// Where a project lies on a page that is as large as its drawing.
struct DrawingPage {
    DrawingLayout layout;
    int width = 0, height = 0;  ///< points
};

/// A sheet's worth of a project, or as much more as it needs to be read, up to the largest page
/// that there is.
[[nodiscard]] DrawingPage pageOf(const OpenProject& work);

/// Draws a project onto a canvas of the page's size.
void drawPage(TvCanvas& canvas, const OpenProject& work, const DrawingPage& page);

/// Writes a project's drawing, as SVG or, for a name that ends so, as PDF. 0 with a sentence in
/// `why` when that failed.
int writeDrawing(const OpenProject& work, const CString& title, const CString& file, CString* why);
