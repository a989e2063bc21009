// What people are asked and told about documents (document_files.h), in ready dialogs (Windows
// only).
//
//     TvDocumentDialogs dialogs;                          // over the process's frame
//     dialogs.setFilter(IDS_PLAN_FILES);                  // for another name: "Plans|*.dat"
//     TvDocumentFile document(plan, &dialogs);
//     if (!dialogs.tell(document.open(name))) return;     // says what there is to say
//
//     TvRecoveryDialog recovery(TvDocumentFile::recoverable());     // when the program starts
//     if (recovery.run(frame))
//         for (const TvRecoverable& work : recovery.chosen()) openNew().recover(work);
//
// Every dialog is modal, in the language of GMSG, and closes by Escape with what changes nothing.
// One that cannot be shown counts as closed so. Templates: document_dialogs.rc; an application's
// own come first. Everything belongs to the user-interface thread.
#pragma once

#include <memory>
#include <vector>

#include "toolbox/dialogs.h"
#include "toolbox/document_files.h"
#include "toolbox/export.h"
#include "toolbox/messages.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

#if !defined(_WIN32)
#error "toolbox/document_dialogs.h needs windows: it exists on Windows only"
#endif

/// Asks the user what TvDocumentFile wants to know. A derived class that asks something else itself
/// replaces that operation.
class TB_API TvDocumentDialogs : public TvDocumentDecisions {
  public:
    /// Over a window, which is borrowed and may go; null: over the process's frame.
    explicit TvDocumentDialogs(HWND owner = nullptr);
    ~TvDocumentDialogs() override;
    TvDocumentDialogs(const TvDocumentDialogs&) = delete;
    TvDocumentDialogs& operator=(const TvDocumentDialogs&) = delete;

    /// The file types offered for another name, as TvFileDialog::setFilter() takes them.
    void setFilter(const CString& filter);
    /// The text of a resource, in the program's language.
    template <toolbox::ResourceId Id>
    void setFilter(Id text) {
        RWCString filter;
        GMSG::getString(static_cast<unsigned short>(text), filter);
        setFilter(CString(filter));
    }
    /// For names without one, without its point.
    void setDefaultExtension(const CString& extension);

    /// Shows what there is to tell of a result, if anything; nothing for what the user has
    /// cancelled, or was asked about directly before. Returns whether the operation was done.
    int tell(const TvDocumentResult& result);

    // The questions. Escape: cancelled, or later.
    Locked locked(const RWCString& name, const TvDocumentHolder& holder, bool mayTakeOver) override;
    Changed changedOnDisk(const RWCString& name, RWCString& other) override;
    int openRescued(const RWCString& name, const std::vector<TvDocumentLoss>& missing) override;
    int writeInPlace(const RWCString& name, const TvDocumentResult& why) override;
    Recovery recoverWork(const TvRecoverable& work) override;

  protected:
    /// Another name for a document; empty when the user cancels. The default shows a dialog for
    /// saving files.
    virtual CString askName(const RWCString& name);

  private:
    HWND owner_;
    CString filter_;
    CString extension_;
    TvDocumentResult::Reason asked_ = TvDocumentResult::done;  // what the user knows already
};

/// The list of unsaved work at the start of a program: each can be recovered, or deleted, or left
/// for later. run() gives 1 when there is something to recover, and chosen() says what.
class TB_API TvRecoveryDialog : public TvDialog {
  public:
    /// For what TvDocumentFile::recoverable() gives.
    explicit TvRecoveryDialog(std::vector<TvRecoverable> works);
    ~TvRecoveryDialog() override;

    /// What is left in the list.
    [[nodiscard]] const std::vector<TvRecoverable>& works() const;
    /// What the user wants to recover, in the order of the list; whole ones only.
    [[nodiscard]] const std::vector<TvRecoverable>& chosen() const;

  protected:
    // What the dialog does itself. A derived class that replaces one calls it for what it leaves.
    void opened() override;
    int command(int control, int notification) override;
    LRESULT notified(NMHDR& note) override;
    void layout(TvDialogLayout& sizes) override;
    const char* placeName() override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};
