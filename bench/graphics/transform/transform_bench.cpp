// Products of transforms and images of points, beside the plain triple loop over arrays.
#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <random>
#include <vector>

#include "toolbox/transform.h"

namespace {

constexpr std::size_t kCount = 256;

struct Plain {
    double m[3][3];
};

Plain multiply(const Plain& a, const Plain& b) {
    Plain product;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            double sum = 0.0;
            for (int k = 0; k < 3; ++k) sum += a.m[i][k] * b.m[k][j];
            product.m[i][j] = sum;
        }
    }
    return product;
}

std::array<double, 3> multiply(const Plain& a, const std::array<double, 3>& v) {
    std::array<double, 3> product{};
    for (std::size_t i = 0; i < 3; ++i) {
        double sum = 0.0;
        for (std::size_t k = 0; k < 3; ++k) sum += a.m[i][k] * v[k];
        product[i] = sum;
    }
    return product;
}

/// The same random transforms in both forms; the program stops when their products differ in a bit.
struct Samples {
    Samples() {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> number(-3, 3);
        for (std::size_t n = 0; n < kCount; ++n) {
            TransMatrix2D t;
            t.rotate(number(random)).scale(number(random), number(random));
            transforms.push_back(t.translate(number(random), number(random)));
            Plain p;
            for (std::size_t i = 0; i < 3; ++i)
                for (std::size_t j = 0; j < 3; ++j) p.m[i][j] = t[i][j];
            plain.push_back(p);
        }
        for (std::size_t n = 0; n + 1 < kCount; ++n) {
            const TransMatrix2D a = transforms[n] * transforms[n + 1];
            const Plain b = multiply(plain[n], plain[n + 1]);
            if (std::memcmp(a[0], b.m, sizeof b.m) != 0) std::abort();
        }
    }
    std::vector<TransMatrix2D> transforms;
    std::vector<Plain> plain;
};

const Samples& samples() {
    static const Samples all;
    return all;
}

void products(benchmark::State& state) {
    const auto& t = samples().transforms;
    std::size_t n = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(t[n] * t[(n + 1) % kCount]);
        n = (n + 1) % kCount;
    }
}
BENCHMARK(products);

void productsPlain(benchmark::State& state) {
    const auto& t = samples().plain;
    std::size_t n = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(multiply(t[n], t[(n + 1) % kCount]));
        n = (n + 1) % kCount;
    }
}
BENCHMARK(productsPlain);

void images(benchmark::State& state) {
    const auto& t = samples().transforms;
    const HomoVector<2> v(3, 4);
    std::size_t n = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(t[n] * v);
        n = (n + 1) % kCount;
    }
}
BENCHMARK(images);

void imagesPlain(benchmark::State& state) {
    const auto& t = samples().plain;
    const std::array<double, 3> v{3, 4, 1};
    std::size_t n = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(multiply(t[n], v));
        n = (n + 1) % kCount;
    }
}
BENCHMARK(imagesPlain);

}  // namespace
