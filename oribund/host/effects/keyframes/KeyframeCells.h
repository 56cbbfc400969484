#pragma once

#include <functional>
#include <span>
#include <vector>

namespace oribund
{

class Graph1dBase;

/**
 * A span of effect time, cut into equal cells, of which each holds the time of one keyframe in it if there is any. Only
 * keyframes within the effect count. Takes the time of the cells that are filled, not of the keyframes.
 */
class KeyframeCells
{
public:
    /** `from` is below `to`, and `count` above 0. */
    KeyframeCells(double from, double to, int count);

    void add(const Graph1dBase& graph);

    /** Ascending times of selected keyframes; they win over others. */
    void addSelected(std::span<const double> times);

    void visit(const std::function<void(double fxTime, bool selected)>& draw) const;

private:
    struct Cell {
        double time = 0.0;
        bool used = false;
        bool selected = false;
    };

    template <class AnyFrom>
    void walk(AnyFrom anyFrom, bool selected);

    double from_;
    double low_; // the part of the span that lies within the effect
    double high_;
    double width_;
    std::vector<Cell> cells_;
};

} // namespace oribund
