// The file around the pages: numbered objects, and the table of where each begins.
//
// Objects 1 to 3 are the catalogue, the tree of pages and the description. Then come the fonts that
// are used, each with its descriptor, and the pages, each with its contents.
#include <array>
#include <bitset>
#include <utility>

#include "base/windows1252.h"
#include "canvas/file_writer.h"
#include "canvas/number_writer.h"
#include "canvas/pdf_page.h"
#include "toolbox/canvas.h"

using namespace toolbox::canvas;

namespace {

constexpr std::size_t kCatalog = 1;
constexpr std::size_t kPages = 2;
constexpr std::size_t kInfo = 3;

std::string reference(std::size_t object) {
    return std::to_string(object) + " 0 R";
}

/// UTF-16 in hexadecimal digits, which readers take for any character.
std::string unicodeString(std::string_view windows1252) {
    const std::string utf8 = toolbox::base::utf8From1252(windows1252);
    std::string out = "<FEFF";
    for (std::string_view rest = utf8; !rest.empty();)
        appendHex(out, toolbox::base::takeUtf8(rest), 4);
    return out += '>';
}

class PdfWriter {
  public:
    /// The second line tells programs that transfer files that this is no text.
    PdfWriter() : out_("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n") {}

    /// The number that object() will use next, and those after it.
    [[nodiscard]] std::size_t next() const { return places_.size() + 1; }

    void object(std::string_view body) {
        places_.push_back(out_.size());
        appendCount(out_, places_.size());
        out_ += " 0 obj\n";
        out_ += body;
        out_ += "\nendobj\n";
    }

    void stream(std::string_view bytes) {
        std::string body = "<< /Length ";
        appendCount(body, bytes.size());
        body += " >>\nstream\n";
        body += bytes;
        body += "\nendstream";
        object(body);
    }

    [[nodiscard]] std::string finish() {
        const std::size_t table = out_.size();
        const std::string count = std::to_string(places_.size() + 1);
        out_ += "xref\n0 " + count + "\n0000000000 65535 f \n";
        for (const std::size_t place : places_) {
            const std::string digits = std::to_string(place);
            out_.append(10 - digits.size(), '0');
            out_ += digits + " 00000 n \n";
        }
        out_ += "trailer\n<< /Size " + count + " /Root " + reference(kCatalog) + " /Info " +
                reference(kInfo) + " >>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
        return std::move(out_);
    }

  private:
    std::string out_;
    std::vector<std::size_t> places_;
};

/// Objects of a font: itself, its descriptor and, for Symbol, its Unicode.
std::size_t objectsOf(std::size_t font) {
    return font == kPdfSymbol ? 3 : 2;
}

using FontObjects = std::array<std::size_t, kPdfFonts>;  ///< 0 for one that is not used

void writeFont(PdfWriter& file, std::size_t font) {
    const std::size_t object = file.next();
    file.object(pdfFontObject(font, object + 1, object + 2));
    file.object(pdfDescriptor(font));
    if (font == kPdfSymbol) file.stream(pdfSymbolUnicode());
}

void writePage(PdfWriter& file, const PdfPage& page, const FontObjects& fonts) {
    std::string body = "<< /Type /Page /Parent " + reference(kPages) + " /MediaBox [0 0 ";
    appendPoint(body, {page.width(), page.height()});
    body.back() = ']';
    body += " /Contents " + reference(file.next() + 1) + " /Resources << /ProcSet [/PDF /Text]";
    if (page.fonts().any()) body += " /Font <<";
    for (std::size_t i = 0; i < kPdfFonts; ++i)
        if (page.fonts()[i]) body += " /F" + std::to_string(i) + ' ' + reference(fonts[i]);
    body += page.fonts().any() ? " >> >> >>" : " >> >>";
    file.object(body);
    file.stream(page.content());
}

std::string pageTree(std::size_t first, std::size_t count) {
    std::string body = "<< /Type /Pages /Count " + std::to_string(count) + " /Kids [";
    for (std::size_t i = 0; i < count; ++i) {
        if (i) body += i % 8 ? ' ' : '\n';
        body += reference(first + 2 * i);
    }
    return body += "] >>";
}

}  // namespace

TvPdf::TvPdf() = default;
TvPdf::~TvPdf() = default;

TvCanvas& TvPdf::addPage(double width, double height) {
    return *pages_.emplace_back(std::make_unique<PdfPage>(width, height));
}

void TvPdf::setTitle(std::string_view title) {
    title_ = title;
}

std::string TvPdf::bytes() const {
    const PdfPage empty(595, 842);
    std::vector<const PdfPage*> pages;
    for (const auto& page : pages_) pages.push_back(page.get());
    if (pages.empty()) pages.push_back(&empty);

    std::bitset<kPdfFonts> used;
    for (const PdfPage* page : pages) used |= page->fonts();
    FontObjects fonts{};
    std::size_t next = kInfo + 1;
    for (std::size_t i = 0; i < kPdfFonts; ++i) {
        if (!used[i]) continue;
        fonts[i] = next;
        next += objectsOf(i);
    }

    PdfWriter file;
    file.object("<< /Type /Catalog /Pages " + reference(kPages) + " >>");
    file.object(pageTree(next, pages.size()));
    file.object(title_.empty() ? "<< >>" : "<< /Title " + unicodeString(title_) + " >>");
    for (std::size_t i = 0; i < kPdfFonts; ++i)
        if (used[i]) writeFont(file, i);
    for (const PdfPage* page : pages) writePage(file, *page, fonts);
    return file.finish();
}

int TvPdf::write(const char* fileName, CString* why) const {
    return writeWhole(fileName, bytes(), why);
}
