// Counts undamaged blocks that a walk loses, and blocks that it invents without a doubt, in many
// damaged files. Run by hand:
//
//     walk_truth [FILES_OF_EACH_KIND [SHOWN]]
#include "truth.h"

#include <cstdio>
#include <cstdlib>
#include <random>

int main(int count, char** arguments) {
    const int each = count > 1 ? std::atoi(arguments[1]) : 200;
    int shown = count > 2 ? std::atoi(arguments[2]) : 10;
    std::mt19937 random(20260822);  // NOLINT: the same files at every run
    const auto chance = [&](std::size_t below) { return std::size_t{random()} % below; };
    const std::vector<corpus::Original> originals = corpus::originals();
    std::size_t files = 0, allLost = 0, allInvented = 0;
    for (std::size_t kind = 0; kind < std::size(corpus::kDamages); ++kind) {
        std::size_t lost = 0, invented = 0;
        for (const corpus::Original& original : originals)
            for (int i = 0; i < each; ++i, ++files) {
                corpus::Damaged file(original);
                corpus::damage(file, original, kind, chance);
                const corpus::Truth truth = corpus::truthOf(original, file);
                lost += truth.lost.size();
                invented += truth.invented.size();
                if ((truth.lost.empty() && truth.invented.empty()) || shown-- <= 0) continue;
                std::printf("%s, %s %d:", original.name.c_str(), corpus::kDamages[kind], i);
                for (const std::uint32_t id : truth.lost) std::printf(" lost %u", id);
                for (const std::uint32_t id : truth.invented) std::printf(" invented %u", id);
                std::printf(", told%s\n", truth.told.c_str());
            }
        std::printf("%-12s lost %zu, invented %zu\n", corpus::kDamages[kind], lost, invented);
        allLost += lost;
        allInvented += invented;
    }
    std::printf("%zu files: %zu undamaged blocks lost, %zu blocks invented without a doubt\n",
                files, allLost, allInvented);
    return allLost + allInvented == 0 ? 0 : 1;
}
