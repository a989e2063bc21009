// The drawing of a document for other programs (Windows only).
#pragma once

class Document;

// Each tells the user what came of it.

/// As a file whose name the user chooses.
void exportDrawing(Document& document);
/// As a metafile on the clipboard.
void copyDrawing(Document& document);
