// A folder of its own for a test, removed with what it holds.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

class TempFolder {
  public:
    TempFolder() {
        std::random_device chance;
        do folder_ = std::filesystem::temp_directory_path() / ("tb-" + std::to_string(chance()));
        while (!std::filesystem::create_directory(folder_));
    }
    ~TempFolder() {
        namespace fs = std::filesystem;
        std::error_code ignored;
        // Windows removes nothing that is read-only.
        for (const auto& entry : fs::recursive_directory_iterator(folder_, ignored))
            fs::permissions(entry, fs::perms::owner_write, fs::perm_options::add, ignored);
        fs::remove_all(folder_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] std::string path() const { return folder_.string(); }
    /// The full name of a file in the folder.
    [[nodiscard]] std::string operator/(std::string_view name) const {
        return (folder_ / name).string();
    }

    /// Makes or replaces a file and returns its full name.
    std::string write(std::string_view name, std::string_view bytes) const {
        std::ofstream(folder_ / name, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return *this / name;
    }
    /// The bytes of a file; "<none>" when it is not there.
    [[nodiscard]] std::string read(std::string_view name) const {
        std::ifstream file(folder_ / name, std::ios::binary);
        if (!file) return "<none>";
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// Names of what the folder holds, sorted.
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

  private:
    std::filesystem::path folder_;
};
