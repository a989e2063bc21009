// A small document for tests: a text, in one block, or one block a word.
#pragma once

#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "support/temp_folder.h"
#include "toolbox/document_files.h"
#include "toolbox/messages.h"

namespace plan_kit {

inline constexpr unsigned long kFirst = 100;
inline constexpr std::size_t kWord = 4;  // bytes of a block

/// The content: words of four letters, each in a block of its own.
struct Plan : TvDocumentContent {
    std::string text;
    std::function<void()> onWrite;
    std::function<void()> onRead;
    int writes = 1;  ///< what write() answers
    int reads = Done;
    std::vector<TvDocumentLoss> lost;

    Plan() = default;
    explicit Plan(std::string words) : text(std::move(words)) {}

    int write(TarvFileWrite& file) override {
        if (onWrite) onWrite();
        for (std::size_t i = 0; i * kWord < text.size(); ++i) {
            TarvBlocFile block;
            block.setID(static_cast<unsigned long>(kFirst + i));
            block.VarRecord::write(text.data() + i * kWord, static_cast<int>(kWord));
            if (!file.writeBloc(block)) return 0;
        }
        return writes;
    }
    int read(TarvFileRead& file) override {
        if (onRead) onRead();
        if (reads != Done) return reads;
        std::string found;
        unsigned long id = 0;
        for (int more = file.getIndex()->getFirstID(id); more;
             more = file.getIndex()->getNextID(id)) {
            TarvBlocFile block;
            if (id < kFirst || id > kFirst + 1000) continue;
            if (!file.getBloc(id, block)) return NotRead;
            found.append(block.getPData(), block.getLen());
        }
        text = found;
        return Done;
    }
    int readRescued(TarvFileRead& file, const std::vector<TvDocumentLoss>& missing) override {
        lost = missing;
        return read(file);
    }
};

/// Answers that a test sets, and a log of the questions.
struct Answers : TvDocumentDecisions {
    Locked onLocked = OpenReadOnly;
    Changed onChanged = CancelChanged;
    Recovery onWork = Later;
    int onDamaged = 0;
    int onInPlace = 0;
    RWCString other;
    std::string asked;             ///< one letter a question
    std::function<void()> before;  ///< each answer
    bool mayTakeOver = false;

    Locked locked(const RWCString&, const TvDocumentHolder&, bool may) override {
        mayTakeOver = may;
        return ask('L'), onLocked;
    }
    Changed changedOnDisk(const RWCString&, RWCString& name) override {
        name = other;
        return ask('C'), onChanged;
    }
    int openRescued(const RWCString&, const std::vector<TvDocumentLoss>&) override {
        return ask('D'), onDamaged;
    }
    int writeInPlace(const RWCString&, const TvDocumentResult&) override {
        return ask('P'), onInPlace;
    }
    Recovery recoverWork(const TvRecoverable&) override { return ask('R'), onWork; }

  private:
    void ask(char question) {
        asked += question;
        if (before) before();
    }
};

/// A document with its content and answers; ends as a crash does unless it is closed.
struct Desk {
    Plan plan;
    Answers answers;
    std::unique_ptr<TvDocumentFile> file = std::make_unique<TvDocumentFile>(plan, &answers);

    TvDocumentFile* operator->() const { return file.get(); }
    void edit(const std::string& text) {
        plan.text = text;
        file->edited();
    }
};

/// What a file holds, read by another.
inline std::string textIn(const std::string& name) {
    Plan plan;
    TvDocumentFile file(plan);
    return file.open(RWCString(name), TvDocumentFile::ReadOnly) ? plan.text : "<none>";
}

}  // namespace plan_kit
