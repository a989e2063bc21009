// The formula grid done step by step: the text is copied and put in capitals, every reduction of
// the grammar is carried out by the two tables, and a formula is parsed anew on each read. The
// library is measured against it and must give the same answers.
#pragma once

#include <memory>
#include <string>

namespace literal {

/// Texts that fit with their terminator are parsed.
inline constexpr int kLongestText = 4096;
inline constexpr int kStackEntries = 20;
inline constexpr int kGridSize = 10;

struct CellReference {
    int row;
    int col;
};

struct StackEntry {
    unsigned char state;
    union {
        double value;
        CellReference cell;
        char name[12];
    };
};

struct Record {
    int kind;  ///< 0 text, 1 value, 2 formula
    double value;
    std::string text;
};

class Grid {
  public:
    void setCell(int row, int col, const char* text);
    double getCell(int row, int col);

    /// Kind and value of a text; the text is put in capitals when it is a formula.
    double parse(char* text, int* kind);

    /// Null for an empty cell.
    [[nodiscard]] const Record* record(int row, int col) const { return cells_[col][row].get(); }
    [[nodiscard]] bool stackOverflowed() const { return overflowed_; }
    static bool error;

  private:
    int nextToken();
    int readNumber();
    bool isFunction(const char* name);
    bool readCell(const char** input, int* col, int* row);
    void shift(int state);
    void reduce(int rule);
    void push(const StackEntry& entry);
    StackEntry pop();
    double cellValue(int col, int row);
    double rangeSum(const CellReference& first, const CellReference& last);
    static int goTo(int below, int rule);

    std::unique_ptr<Record> cells_[kGridSize][kGridSize];
    const char* input_ = nullptr;
    int token_ = 0;
    int top_ = -1;
    bool failed_ = false;
    bool namesCell_ = false;
    bool overflowed_ = false;
    static char buffer_[kLongestText];
    static StackEntry stack_[kStackEntries];
    static StackEntry current_;
};

}  // namespace literal
