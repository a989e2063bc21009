// Writes the sample as SVG and PDF, in the folder that it is given.
#include <cstdio>
#include <string>

#include "sample_drawing.h"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::string folder = argv[1];
    TvSvg svg(kSampleWidth, kSampleHeight);
    TvPdf pdf;
    svg.setTitle("\311chantillon");
    pdf.setTitle("\311chantillon");
    drawSample(svg);
    drawSample(pdf.addPage(kSampleWidth, kSampleHeight));
    CString why;
    if (svg.write((folder + "/sample.svg").c_str(), &why) &&
        pdf.write((folder + "/sample.pdf").c_str(), &why))
        return 0;
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}
