// The system's colour table.
#include "Screen.h"

#include <climits>

namespace {

constexpr int kGreys = 32;
constexpr int kCubeSteps = 6;
constexpr int kCubeSize = kCubeSteps * kCubeSteps * kCubeSteps;
constexpr uint8 kEdgeGreys[] = { 24, 72, 128, 184, 216, 232, 248 };

rgb_color Grey(int value)
{
    const auto level = static_cast<uint8>(value);
    return { level, level, level };
}

rgb_color CubeColor(int index)
{
    const auto level = [](int step) { return static_cast<uint8>(step % kCubeSteps * 51); };
    return { level(index / (kCubeSteps * kCubeSteps)), level(index / kCubeSteps), level(index) };
}

rgb_color TableColor(int index)
{
    if (index < kGreys)
        return Grey(index * 255 / (kGreys - 1));
    if (index < kGreys + kCubeSize)
        return CubeColor(index - kGreys);
    if (index < B_TRANSPARENT_8_BIT)
        return Grey(kEdgeGreys[index - kGreys - kCubeSize]);
    return B_TRANSPARENT_COLOR;
}

uint8 Nearest(const color_map& map, int red, int green, int blue)
{
    int best = 0;
    int smallest = INT_MAX;
    for (int i = 0; i < B_TRANSPARENT_8_BIT; i++) {
        const rgb_color& color = map.color_list[i];
        const int distance = (color.red - red) * (color.red - red)
            + (color.green - green) * (color.green - green)
            + (color.blue - blue) * (color.blue - blue);
        if (distance < smallest) {
            smallest = distance;
            best = i;
        }
    }
    return static_cast<uint8>(best);
}

color_map* MakeColors()
{
    auto* map = new color_map {};
    for (int i = 0; i <= B_TRANSPARENT_8_BIT; i++)
        map->color_list[i] = TableColor(i);
    for (int i = 0; i < B_TRANSPARENT_8_BIT; i++) {
        const rgb_color& color = map->color_list[i];
        map->inversion_map[i] = Nearest(*map, 255 - color.red, 255 - color.green, 255 - color.blue);
    }
    map->inversion_map[B_TRANSPARENT_8_BIT] = B_TRANSPARENT_8_BIT;
    const auto widen = [](int value) { return (value & 31) * 255 / 31; };
    for (int i = 0; i < 32768; i++)
        map->index_map[i] = Nearest(*map, widen(i >> 10), widen(i >> 5), widen(i));
    return map;
}

} // namespace

const color_map* system_colors()
{
    static const color_map* const map = MakeColors(); // outlives every static object
    return map;
}

uint8 IndexOfColor(rgb_color color)
{
    if (color == B_TRANSPARENT_COLOR)
        return B_TRANSPARENT_8_BIT;
    return Nearest(*system_colors(), color.red, color.green, color.blue);
}
