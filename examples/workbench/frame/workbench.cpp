// The program: its start and end, its documents, its palette, and what it reports.
#include "frame/workbench.h"

#include <algorithm>
#include <sstream>
#include <string>

#include "dialogs/dialogs.h"
#include "drawing/drawing_view.h"
#include "frame/view.h"
#include "frame/workbench_frame.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"
#include "section_csv.h"
#include "table/table_view.h"
#include "toolbox/document_dialogs.h"
#include "toolbox/files.h"

namespace {

constexpr UINT kPurgeDocuments = 0x3E0, kLookAtDisk = 0x3E1;  // private messages of the frame
constexpr UINT kIdleInterval = 1000;                          // ms
constexpr std::size_t kSampleBeams = 10000;
constexpr int kPaletteMargin = 24;  // pixels from the edge of the documents

/// The section table is part of the program.
std::vector<Section> loadSections(HINSTANCE instance) {
    const HRSRC found = FindResourceA(instance, MAKEINTRESOURCEA(IDR_SECTIONS), RT_RCDATA);
    if (!found) return {};
    std::istringstream table(
        std::string(static_cast<const char*>(LockResource(LoadResource(instance, found))),
                    SizeofResource(instance, found)));
    return readSections(table);
}

WorkbenchFrame& workbenchFrame() {
    return static_cast<WorkbenchFrame&>(Workbench::frame());
}

}  // namespace

Workbench::Workbench(HINSTANCE instance, const Settings& settings)
    : instance_(instance),
      settings_(settings),
      sections_(loadSections(instance)),
      keys_(settings.file),
      undo_(CMD_UNDO, CMD_REDO),
      palette_(IDD_PALETTE) {
    const std::string_view file = settings_.file.view();
    TvDocumentFile::setRecoveryFolder(
        RWCString(std::string(file.substr(0, file.find_last_of("\\/") + 1)) + "recovery"));
    RWCString columns;
    GMSG::getProfile("Table", "Columns", columns, "");
    keys_.selectColumns(columns);
}

Workbench::~Workbench() = default;

const Section* Workbench::section(const CString& designation) const {
    const auto found = std::ranges::find(sections_, designation, &Section::designation);
    return found == sections_.end() ? nullptr : &*found;
}

Document* Workbench::activeDocument() const {
    const HWND child = frame().getActiveMDIChild();
    const auto* const view = child ? dynamic_cast<const View*>(WindowDict::find(child)) : nullptr;
    return view ? static_cast<Document*>(view->document) : nullptr;
}

int Workbench::showBox(const CString& message, unsigned short flags) {
    const ModalPhase phase(*this);
    return MessageBoxA(frame().getFrame(), message.c_str(), text(kProgram).c_str(), flags);
}

void Workbench::showHint(const CString& hint) {
    workbenchFrame().showHint(hint);
}

void Workbench::collectErrors() {
    errors_ += GMSG::getLstErrorsInString();
}

void Workbench::reviewErrors() {
    collectErrors();
    GMSG::setErrorReportingOption(GMSG::ReportInList);  // empties its list
    if (showMessages(frame().getFrame(), *this, errors_)) errors_.Empty();
}

void Workbench::viewClosed() {
    if (const HWND window = frame().getFrame()) PostMessageA(window, kPurgeDocuments, 0, 0);
}

void Workbench::sessionGoesOn() {
    for (const auto& document : documents_) document->keepAsking();
}

void Workbench::keysChanged() {
    for (const auto& document : documents_) document->tellViews(Document::KeysChanged);
    refreshKeyList();
}

void Workbench::editFormat(HWND parent, UINT key) {
    UDKeyData data = keys_.getKeyData(key);
    {
        const DialogPhase phase(*this);
        if (!data.getFormat()->setFormatDlg(parent, data)) return;
    }
    keys_.setKeyDesc(key, data.getDescStr());
    keys_.setKeyFormat(key, *data.getFormat());
    if (!keys_.save(key)) report(kKeyNotSaved, MB_ICONEXCLAMATION, data.getKeyStr());
    keysChanged();
}

Document* Workbench::documentOf(const CString& fullName) const {
    const auto found = std::ranges::find_if(documents_, [&](const auto& document) {
        const CString name = document->fileName();
        return !name.empty() && IsSameFile(name, fullName);
    });
    return found == documents_.end() ? nullptr : found->get();
}

bool Workbench::openFile(const CString& file) {
    const CString fullName = FullFileName(file);
    if (Document* const open = documentOf(fullName)) {
        showTable(*open);
        return true;
    }
    auto document = std::make_unique<Document>(*this);
    if (!document->open(fullName)) return false;
    if (!document->fileName().empty()) noteRecent(fullName);
    showDocument(std::move(document));
    return true;
}

void Workbench::offerRecovery() {
    std::vector<TvRecoverable> works = TvDocumentFile::recoverable();
    if (works.empty()) return;
    std::vector<TvRecoverable> chosen;
    {
        const ModalPhase phase(*this);
        TvRecoveryDialog dialog(std::move(works));
        if (dialog.run(frame().getFrame())) chosen = dialog.chosen();
    }
    for (const TvRecoverable& work : chosen) {
        auto document = std::make_unique<Document>(*this);
        if (document->recover(work)) showDocument(std::move(document));
    }
}

void Workbench::idle() {
    for (std::size_t i = 0; i < documents_.size(); ++i) documents_[i]->idle();
}

void Workbench::lookAtDisk() {
    if (const HWND window = frame().getFrame()) PostMessageA(window, kLookAtDisk, 0, 0);
}

void Workbench::showDocument(std::unique_ptr<Document> document) {
    documents_.push_back(std::move(document));
    Document& shown = *documents_.back();
    showTable(shown);
    showDrawing(shown);
    if (documents_.size() == 1) {
        MDI::tileVertically(frame().getClient());
        showPalette();
    }
    refreshCommands();
}

int Workbench::isPaletteVisible() const {
    return palette_.isOpen() && palette_.getTool()->isVisible();
}

/// The palette appears with the first document: there is nothing to draw in before.
void Workbench::showPalette() {
    if (!palette_.isOpen() || isPaletteVisible() || !paletteWanted_) return;
    const HWND window = palette_.getHWND();
    if (!palettePlace_.restore(window, 0)) {
        RECT client, own;
        GetWindowRect(frame().getClient(), &client);
        GetWindowRect(window, &own);
        SetWindowPos(window, nullptr, client.right - (own.right - own.left) - kPaletteMargin,
                     client.top + 2 * kPaletteMargin, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    palette_.show(1);
}

void Workbench::noteRecent(const CString& file) {
    recent_.setLogFile(file);
    recent_.ecrire(settings_.file.c_str());
}

void Workbench::openSample() {
    std::vector<CString> names;
    for (const Section& section : sections_) names.push_back(section.designation);
    auto document = std::make_unique<Document>(*this);
    document->setProject(sampleProject(kSampleBeams, names));
    showDocument(std::move(document));
}

void Workbench::closeDocument(Document& document) {
    if (isModal() || !document.mayClose()) return;
    while (document.views.getCount() > 0) document.views[0]->destroy();
}

int Workbench::canClose() {
    // As if the user had pressed its button.
    if (meter_ && meter_->isCancelEnabled())
        SendMessageA(meter_->getMeterHandle(), WM_COMMAND, IDCANCEL, 0);
    return !isModal();  // the documents are asked next
}

int Workbench::frameCreated(HWND frameWindow, HINSTANCE) {
    TarvMeter::setInstance(instance_);
    GMSG::setParent(frameWindow);
    createCommands(frameWindow);
    workbenchFrame().createStatusBar();
    recent_.init(frameWindow, CMD_EXIT, CMD_RECENT);
    recent_.lire(settings_.file.c_str());
    framePlace_.restore(frameWindow, 1);
    GMSG::getProfile("Palette", "Shown", paletteWanted_, 1);
    refreshCommands();
    showHint(text(kWelcome));
    SetTimer(frameWindow, WorkbenchFrame::kIdleTimer, kIdleInterval, nullptr);
    return 1;
}

void Workbench::frameDestroyed() {
    const HWND frameWindow = frame().getFrame();
    framePlace_.save(frameWindow);
    if (palette_.isOpen()) palettePlace_.save(palette_.getHWND());
    GMSG::writeProfile("Palette", "Shown", paletteWanted_);
    GMSG::writeProfile("Table", "Columns", keys_.columnsText());
    recent_.ecrire(settings_.file.c_str());
    closeKeyList();
    // Somebody destroyed the frame below a dialog: its modal phase still ends.
    if (!isModal()) commands_.reset();
    GMSG::setParent(nullptr);
}

void Workbench::classRegistered(HINSTANCE instance) {
    registerViews(instance);
}

int Workbench::privateMessage(HWND, UINT message, WPARAM, LPARAM) {
    if (message == kLookAtDisk) {
        Document* const document = isModal() ? nullptr : activeDocument();
        if (document) document->lookAtDisk();
        return 1;
    }
    if (message != kPurgeDocuments) return 0;
    if (isModal()) return 1;  // its end asks again
    std::erase_if(documents_, [](const auto& document) { return document->views.getCount() == 0; });
    refreshCommands();
    return 1;
}

void Workbench::systemCommand(HWND, WPARAM, LPARAM) {}

void Workbench::childActivated(HWND) {
    refreshCommands();
    lookAtDisk();
}

void Workbench::frameMoved(int) {}

void Workbench::childClosed(HWND) {}
