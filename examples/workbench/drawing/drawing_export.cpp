// SVG and PDF files through the portable drawing; the clipboard's picture has the same page.
#include "drawing/drawing_export.h"

#include "dialogs/file_dialog.h"
#include "drawing/drawing_page.h"
#include "frame/workbench.h"
#include "resources/workbench_texts.h"
#include "toolbox/canvas_device.h"

void exportDrawing(Document& document) {
    Workbench& workbench = document.workbench();
    const CString file = askForDrawingFile(workbench, document.name());
    if (file.empty()) return;
    CString why;
    if (writeDrawing(document.work(), document.name(), file, &why))
        workbench.showHint(text(kDrawingWritten, file));
    else
        workbench.report(kDrawingNotWritten, MB_ICONSTOP, file, why);
}

void copyDrawing(Document& document) {
    Workbench& workbench = document.workbench();
    const DrawingPage page = pageOf(document.work());
    TvMetafile picture(page.width, page.height);
    drawPage(picture, document.work(), page);
    CString why;
    if (picture.copy(&why))
        workbench.showHint(text(kDrawingCopied));
    else
        workbench.report(kDrawingNotCopied, MB_ICONEXCLAMATION, why);
}
