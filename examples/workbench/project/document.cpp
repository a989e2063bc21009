// Long jobs (opening, saving, computing) run under a meter; every change ends in tellViews().
#include "project/document.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "date_words.h"
#include "dialogs/file_dialog.h"
#include "frame/tracing.h"
#include "frame/view.h"
#include "frame/workbench.h"
#include "project/project_store.h"
#include "resources/workbench_texts.h"
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

/// True when something is left of a damaged file and the user wants it.
bool tellDamage(Workbench& workbench, const CString& name, const LoadedProject& loaded) {
    constexpr unsigned short kQuestion = MB_YESNO | MB_ICONEXCLAMATION;
    if (loaded.loaded == 0) {
        workbench.report(kNothingReadable, MB_ICONSTOP, name);
        return false;
    }
    const int answer =
        loaded.expected > 0
            ? workbench.report(kOpenRecovered, kQuestion, name, loaded.loaded, loaded.expected)
            : workbench.report(kOpenUncounted, kQuestion, name, loaded.loaded);
    return answer == IDYES;
}

}  // namespace

Document::Document(Workbench& workbench)
    : views(this, &View::document),
      workbench_(workbench),
      work_([&workbench](const CString& designation) { return workbench.section(designation); }) {
    static int projects = 0;
    untitled_ = text(kUntitled, ++projects);
    listenTo(&work_.steps());
}

Document::~Document() {
    listenTo(nullptr);
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
    LoadedProject loaded;
    {
        JobMeter meter(workbench_, kOpening, withoutFolder(file), 0);
        loaded = loadProject(file.c_str(), std::ref(meter));
    }
    const auto fault = static_cast<unsigned short>(int{loaded.error});
    CTvTrace::Trace(TraceFiles, "opened %s: %d, %u items", file.c_str(), int{fault},
                    static_cast<unsigned>(loaded.loaded));
    if (fault == kDamaged) {
        if (!tellDamage(workbench_, withoutFolder(file), loaded)) return false;
        // What can be recovered becomes a project without a file: the damaged one stays as it is.
        steps().setChanged();
        untitled_ = text(kRecovered, withoutFolder(file));
    } else if (fault != 0) {
        workbench_.report(fault, MB_ICONSTOP, withoutFolder(file));
        return false;
    } else {
        file_ = file;
    }
    created_ = loaded.created;
    setProject(std::move(loaded.project));
    workbench_.showHint(text(kCreatedOn, dateInWords(created_)));
    return true;
}

bool Document::saveTo(const CString& file) {
    ErrObj error;
    {
        JobMeter meter(workbench_, kSaving, withoutFolder(file), 0);
        error = saveProject(project(), file.c_str(), created_, std::ref(meter));
    }
    if (error != 0) {
        workbench_.report(static_cast<unsigned short>(int{error}), MB_ICONSTOP,
                          withoutFolder(file));
        return false;
    }
    file_ = file;
    workbench_.noteRecent(file);
    steps().setClean();
    tellViews(Selected);  // the titles have the name
    return true;
}

bool Document::save() {
    return file_.empty() ? saveAs() : saveTo(file_);
}

bool Document::saveAs() {
    const CString file = askForFile(workbench_, file_, true);
    return !file.empty() && saveAs(file);
}

bool Document::saveAs(const CString& file) {
    const CString fullName = FullFileName(file);
    const Document* const has = workbench_.documentOf(fullName);
    if (!has || has == this) return saveTo(fullName);
    workbench_.report(kOpenElsewhere, MB_ICONEXCLAMATION, withoutFolder(fullName));
    return false;
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

CString Document::name() const {
    return file_.empty() ? untitled_ : withoutFolder(file_);
}

CString Document::title() const {
    return isModified() ? name() + "*" : name();
}
