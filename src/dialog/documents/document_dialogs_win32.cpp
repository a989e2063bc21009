// Each decision is a question with answers; what cannot be shown decides for what loses nothing.
#include <ctime>
#include <utility>

#include "dialog/documents/document_texts.h"
#include "dialog/documents/question_dialog_win32.h"
#include "dialog/documents/work_text.h"
#include "toolbox/document_dialogs.h"
#include "toolbox/pickers.h"
#include "toolbox/platform.h"

using toolbox::documents::printed;
using toolbox::documents::Question;
using toolbox::documents::QuestionDialog;
using toolbox::documents::TextId;

namespace {

using namespace toolbox::documents;

int ask(HWND owner, Question question) {
    return QuestionDialog(std::move(question)).run(IsWindow(owner) ? owner : nullptr);
}

/// How long ago somebody was heard of, in the largest unit that says it.
CString ago(long seconds) {
    constexpr long kInMinute = 60, kInHour = 3600, kInDay = 86400;
    constexpr long kMany = 2;  // of a unit, from which on it is used
    if (seconds >= kMany * kInDay) return printed(kDaysAgo, seconds / kInDay);
    if (seconds >= kMany * kInHour) return printed(kHoursAgo, seconds / kInHour);
    if (seconds >= kMany * kInMinute) return printed(kMinutesAgo, seconds / kInMinute);
    return printed(kSecondsAgo, seconds);
}

}  // namespace

namespace toolbox::documents {

CString nameOf(const TvRecoverable& work) {
    return work.document.isNull() ? printed(kUnnamed) : CString(work.document);
}

CString timeOf(const TvRecoverable& work) {
    constexpr std::size_t kRoom = 32;
    std::tm local{};
    if (work.saved <= 0 || localtime_s(&local, &work.saved) != 0) return printed(kUnknownTime);
    char text[kRoom] = "";
    (void)std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local);
    return text;
}

CString sizeOf(const TvRecoverable& work) {
    constexpr std::uint64_t kKilobyte = 1024;
    return printed(kKilobytes, static_cast<int>((work.size + kKilobyte - 1) / kKilobyte));
}

}  // namespace toolbox::documents

TvDocumentDialogs::TvDocumentDialogs(HWND owner) : owner_(owner) {}

TvDocumentDialogs::~TvDocumentDialogs() = default;

void TvDocumentDialogs::setFilter(const CString& filter) {
    filter_ = filter;
}

void TvDocumentDialogs::setDefaultExtension(const CString& extension) {
    extension_ = extension;
}

int TvDocumentDialogs::tell(const TvDocumentResult& result) {
    const RWCString text = result.text();
    const bool isKnown = std::exchange(asked_, TvDocumentResult::done) == result.reason &&
                         result.kept.isNull() && result.backup == 0;
    if (!text.isNull() && result.reason != TvDocumentResult::cancelled && !isKnown)
        toolbox::platform::current().prompt->messageBox(
            IsWindow(owner_) ? owner_ : GMSG::getParent(), text.data(), GMSG::getAppTitle(),
            result.ok ? MB_ICONINFORMATION : MB_ICONEXCLAMATION);
    return result.ok;
}

TvDocumentDecisions::Locked TvDocumentDialogs::locked(const RWCString& name,
                                                      const TvDocumentHolder& holder,
                                                      bool mayTakeOver) {
    asked_ = TvDocumentResult::inUse;
    TvDocumentResult inUse;
    inUse.ok = false;
    inUse.reading = true;
    inUse.reason = TvDocumentResult::inUse;
    inUse.name = name;
    inUse.holder = holder;
    const CString what(inUse.text());
    Question question{.text = printed(kInUse, what), .answers = {kOpenReadOnly}, .cancel = kCancel};
    if (mayTakeOver) {
        question.text = holder.age < 0 ? printed(kNotHeardOf, what)
                                       : printed(kMayTakeOver, what, ago(holder.age));
        question.answers.push_back(kTakeOver);
    }
    switch (ask(owner_, std::move(question))) {
        case 1:
            return OpenReadOnly;
        case 2:
            return TakeOver;
        default:
            return CancelLocked;
    }
}

TvDocumentDecisions::Changed TvDocumentDialogs::changedOnDisk(const RWCString& name,
                                                              RWCString& other) {
    asked_ = TvDocumentResult::changedOnDisk;
    switch (ask(owner_, {.text = printed(kChangedOnDisk, name),
                         .answers = {kSaveElsewhere, kReplace, kTakeTheirs},
                         .cancel = kCancel})) {
        case 1:
            other = askName(name);
            return other.isNull() ? CancelChanged : SaveAs;
        case 2:
            return Replace;
        case 3:
            return TakeTheirs;
        default:
            return CancelChanged;
    }
}

int TvDocumentDialogs::openRescued(const RWCString& name,
                                   const std::vector<TvDocumentLoss>& missing) {
    asked_ = TvDocumentResult::damaged;
    Question question{
        .text = printed(kDamaged, name), .answers = {kOpenRescued}, .cancel = kCancel};
    for (const TvDocumentLoss& loss : missing) question.lines.emplace_back(loss.text());
    return ask(owner_, std::move(question)) == 1;
}

int TvDocumentDialogs::writeInPlace(const RWCString&, const TvDocumentResult& why) {
    asked_ = why.reason;
    return ask(owner_, {.text = printed(kInPlace, why.text()),
                        .answers = {kSaveElsewhere, kWriteInPlace},
                        .cancel = kCancel}) == 2;
}

TvDocumentDecisions::Recovery TvDocumentDialogs::recoverWork(const TvRecoverable& work) {
    switch (ask(owner_, {.text = printed(kUnsavedWork, nameOf(work), timeOf(work), sizeOf(work)),
                         .answers = {kRecover, kDeleteWork},
                         .cancel = kLater})) {
        case 1:
            return Recover;
        case 2:
            return ThrowAway;
        default:
            return Later;
    }
}

CString TvDocumentDialogs::askName(const RWCString& name) {
    TvFileDialog dialog;
    if (!filter_.empty()) dialog.setFilter(filter_);
    dialog.setDefaultExtension(extension_);
    dialog.setFile(name);
    return dialog.save(IsWindow(owner_) ? owner_ : nullptr) ? dialog.getFile() : CString();
}
