// Long jobs (opening, saving, computing) run under a meter; every change ends in tellViews().
#include "project/document.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "date_words.h"
#include "dialogs/file_dialog.h"
#include "frame/tracing.h"
#include "frame/view.h"
#include "frame/workbench.h"
#include "project/project_store.h"
#include "resources/workbench_texts.h"
#include "toolbox/document_dialogs.h"
#include "toolbox/files.h"
#include "toolbox/meter.h"

namespace {

/// Items from which a job is worth a meter.
constexpr std::size_t kManyItems = 500;
constexpr std::size_t kItemsBetweenSteps = 100;

CString withoutFolder(const CString& file) {
    const std::size_t slash = file.view().find_last_of("\\/");
    return slash == std::string_view::npos ? file : CString(file.view().substr(slash + 1));
}

/// Hands a quit message on at its end: a meter uses up the one that comes by.
class QuitKeepingMeter : public TarvMeter {
  public:
    explicit QuitKeepingMeter(int cancelEnabled) : canPress_(cancelEnabled != 0) {}
    ~QuitKeepingMeter() override {
        if (isToQuit_) PostQuitMessage(0);
    }
    QuitKeepingMeter(const QuitKeepingMeter&) = delete;
    QuitKeepingMeter& operator=(const QuitKeepingMeter&) = delete;

    [[nodiscard]] bool isToQuit() const { return isToQuit_; }

  private:
    void cancelMeter() const override {
        // Called for the button as well, which can be pressed once and is disabled by then.
        if (canPress_ && isMeterCreated() && !isCancelEnabled())
            canPress_ = false;
        else
            isToQuit_ = true;
    }

    mutable bool canPress_;
    mutable bool isToQuit_ = false;
};

/// A meter over a job of many items; over one of few nothing is shown. Meanwhile the program takes
/// no other input.
class JobMeter {
  public:
    JobMeter(Workbench& workbench, unsigned short caption, const CString& what, int cancelEnabled)
        : workbench_(workbench),
          caption_(text(caption)),
          what_(what),
          canCancel_(cancelEnabled),
          meter_(cancelEnabled) {}
    ~JobMeter() {
        if (phase_) workbench_.showsMeter(outer_);
    }
    JobMeter(const JobMeter&) = delete;
    JobMeter& operator=(const JobMeter&) = delete;

    /// False when the job was cancelled, or the program is to quit and the job can be cancelled.
    bool operator()(std::size_t done, std::size_t total) {
        if (total < kManyItems || done % kItemsBetweenSteps != 0) return true;
        if (!shown_) show(total);
        meter_.setMeterString(1, text(kItemsDone, done, total).c_str());
        // A part of the job is what lies between two steps: the bar is drawn once for each part.
        meter_.setPartsComplete(static_cast<unsigned>(done / kItemsBetweenSteps));
        return !meter_.isMeterCancelled() && !(canCancel_ && meter_.isToQuit());
    }

  private:
    void show(std::size_t total) {
        phase_.emplace(workbench_);
        outer_ = workbench_.showsMeter(&meter_);
        meter_.setParentWindow(workbench_.frame().getFrame());
        shown_.emplace(meter_, caption_.c_str(), canCancel_);
        meter_.setMeterString(0, what_.c_str());
        meter_.setPartsInJob(static_cast<unsigned>(total / kItemsBetweenSteps));
    }

    Workbench& workbench_;
    CString caption_;
    CString what_;
    int canCancel_;
    std::optional<ModalPhase> phase_;
    QuitKeepingMeter meter_;
    TarvMeter* outer_ = nullptr;  // shown before, if any
    std::optional<toolbox::ShownMeter> shown_;
};

}  // namespace

/// What the document's file holds. Reading and writing many items show a meter.
class Document::Stored : public ProjectContent {
  public:
    explicit Stored(Document& document) : document_(document) {}

    int write(TarvFileWrite& file) override {
        return metered(kSaving, [&] { return ProjectContent::write(file); });
    }
    int read(TarvFileRead& file) override {
        return metered(kOpening, [&] { return ProjectContent::read(file); });
    }
    int readRescued(TarvFileRead& file, const std::vector<TvDocumentLoss>& missing) override {
        return metered(kOpening, [&] { return ProjectContent::readRescued(file, missing); });
    }
    /// Whether a project was read since the mark was taken off.
    [[nodiscard]] bool wasRead() const { return wasRead_; }
    void takeMarkOff() { wasRead_ = false; }

  protected:
    [[nodiscard]] const Project& project() const override { return document_.project(); }
    void setProject(Project project) override {
        wasRead_ = true;
        document_.selection_ = {};
        document_.work_.setProject(std::move(project));
    }
    void tellProgress(std::size_t done, std::size_t total) override {
        if (meter_) static_cast<void>((*meter_)(done, total));
    }

  private:
    template <class Job>
    int metered(unsigned short caption, Job job) {
        meter_.emplace(document_.workbench_, caption, document_.name(), 0);
        const int result = job();
        meter_.reset();
        return result;
    }

    Document& document_;
    std::optional<JobMeter> meter_;
    bool wasRead_ = false;
};

/// Asks over the frame; another name is that of a project.
class Document::Questions : public TvDocumentDialogs {
  public:
    explicit Questions(Workbench& workbench)
        : TvDocumentDialogs(Workbench::frame().getFrame()), workbench_(workbench) {}

  protected:
    CString askName(const RWCString& name) override {
        return askForFile(workbench_, CString(name), true);
    }

  private:
    Workbench& workbench_;
};

Document::Document(Workbench& workbench)
    : views(this, &View::document),
      workbench_(workbench),
      work_([&workbench](const CString& designation) { return workbench.section(designation); }),
      content_(std::make_unique<Stored>(*this)),
      questions_(std::make_unique<Questions>(workbench)),
      file_(std::make_unique<TvDocumentFile>(*content_, questions_.get())) {
    constexpr int kEdits = 20, kSeconds = 30;
    static int projects = 0;
    int edits = kEdits, seconds = kSeconds;
    GMSG::getProfile("Autosave", "Edits", edits, kEdits);
    GMSG::getProfile("Autosave", "Seconds", seconds, kSeconds);
    file_->setAutosave(edits, seconds);
    untitled_ = text(kUntitled, ++projects);
    listenTo(&work_.steps());
}

/// What is neither saved nor given up stays to be recovered.
Document::~Document() {
    listenTo(nullptr);
    if (!isModified() || discarded_) file_->close();
}

bool Document::setCurrentKeys(std::size_t index) {
    return work_.setCurrentKeys(workbench_.keys(), index);
}

void Document::select(const Selection& selection) {
    if (selection == selection_) return;
    selection_ = selection;
    tellViews(Selected);
}

void Document::tellViews(unsigned changes) {
    for (int i = 0; i < views.getCount(); ++i) {
        views[i]->showTitle();
        views[i]->documentChanged(changes);
    }
    workbench_.refreshCommands();
}

/// Also what was saved or forgotten: the titles tell.
void Document::undoChanged() {
    discarded_ = false;
    if (isModified()) file_->edited();
    selection_ = work_.settled(selection_);
    tellViews(Content);
}

std::uint32_t Document::put(Beam beam, unsigned short step) {
    return work_.put(std::move(beam), step);
}

Edit::Outcome Document::change(ProjectChange change, StepName name, unsigned gesture) {
    return work_.change(std::move(change), std::move(name), gesture);
}

bool Document::put(std::vector<Label> labels, unsigned short step) {
    return work_.put(std::move(labels), step);
}

bool Document::moveBeam(std::uint32_t id, double x, double y) {
    return work_.moveBeam(id, x, y);
}

bool Document::removeSelected() {
    if (!work_.remove(selection_)) return false;
    select({});
    return true;
}

bool Document::recompute() {
    const std::size_t count = project().beams().size();
    work_.forgetResults();
    std::size_t done = 0;
    {
        JobMeter meter(workbench_, kComputing, title(), 1);
        for (; done < count && meter(done, count); ++done) work_.compute(done);
    }
    CTvTrace::Trace(TraceComputing, "computed %u of %u beams", static_cast<unsigned>(done),
                    static_cast<unsigned>(count));
    tellViews(Content);
    workbench_.showHint(text(kItemsDone, done, count));
    return done == count;
}

void Document::setProject(Project project) {
    selection_ = {};
    work_.setProject(std::move(project));
    recompute();
}

bool Document::open(const CString& file) {
    const ModalPhase phase(workbench_);
    TvDocumentResult result = file_->open(file);
    // The items of older files tell themselves that they are damaged.
    if (!result.ok && content_->isDamaged() && questions_->openRescued(file, {})) {
        content_->allowDamage(true);
        result = file_->open(file);
        content_->allowDamage(false);
        if (result.ok) file_->edited();
    }
    return opened(result);
}

bool Document::recover(const TvRecoverable& work) {
    const ModalPhase phase(workbench_);
    return opened(file_->recover(work));
}

/// Also after the file was read again.
bool Document::opened(const TvDocumentResult& result) {
    CTvTrace::Trace(TraceFiles, "opened %s: %d, %u items", fileName().c_str(), int{result.reason},
                    static_cast<unsigned>(content_->loaded()));
    questions_->tell(result);
    if (!content_->wasRead()) return result.ok;
    content_->takeMarkOff();
    if (file_->isChanged())
        steps().setChanged();
    else
        steps().setClean();
    recompute();
    workbench_.showHint(content_->loaded() < content_->expected()
                            ? text(kItemsDone, content_->loaded(), content_->expected())
                            : text(kCreatedOn, dateInWords(content_->created())));
    return true;
}

/// With the answer to take what is on the disk, the project was read.
bool Document::saved(const TvDocumentResult& result) {
    if (!result.ok || content_->wasRead()) return opened(result);
    questions_->tell(result);
    told_ = TvDocumentFile::SameOnDisk;
    workbench_.noteRecent(fileName());
    steps().setClean();
    tellViews(Selected);  // the titles have the name
    return true;
}

bool Document::save() {
    if (fileName().empty()) return saveAs();
    const ModalPhase phase(workbench_);
    return saved(file_->save());
}

bool Document::saveAs() {
    const CString file = askForFile(workbench_, fileName(), true);
    return !file.empty() && saveAs(file);
}

bool Document::saveAs(const CString& file) {
    const CString fullName = FullFileName(file);
    const Document* const has = workbench_.documentOf(fullName);
    if (has && has != this) {
        workbench_.report(kOpenElsewhere, MB_ICONEXCLAMATION, withoutFolder(fullName));
        return false;
    }
    const ModalPhase phase(workbench_);
    return saved(has ? file_->save() : file_->saveAs(fullName));
}

void Document::idle() {
    if (!file_->idle()) workbench_.showHint(CString(file_->lastAutosave().text()));
}

void Document::lookAtDisk() {
    const TvDocumentFile::DiskState now = file_->changedOnDisk();
    if (std::exchange(told_, now) == now || now == TvDocumentFile::SameOnDisk) return;
    if (now == TvDocumentFile::GoneFromDisk)
        return workbench_.showHint(text(kGoneFromDisk, name()));
    if (isModified()) return workbench_.showHint(text(kOtherOnDisk, name()));
    if (workbench_.showBox(text(kReadAgain, name()), MB_YESNO | MB_ICONQUESTION) != IDYES) return;
    const ModalPhase phase(workbench_);
    opened(file_->reload());
    told_ = TvDocumentFile::SameOnDisk;
}

bool Document::mayClose() {
    if (!isModified() || discarded_) return true;
    const CString question = text(kSaveFirst, name());
    switch (workbench_.showBox(question, MB_YESNOCANCEL | MB_ICONQUESTION)) {
        case IDYES:
            return save();
        case IDNO:
            discarded_ = true;
            return true;
        default:
            return false;
    }
}

CString Document::fileName() const {
    return CString(file_->getName());
}

CString Document::name() const {
    return fileName().empty() ? untitled_ : withoutFolder(fileName());
}

CString Document::title() const {
    const CString whole = isModified() ? name() + "*" : name();
    return file_->isReadOnly() ? text(kReadOnlyTitle, whole) : whole;
}
