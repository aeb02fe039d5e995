// A step on which something comes is best done before those that it leaves. Where that goes round in a
// circle, something will be off the air; such circles (the strongly connected components of "comes before
// leaves") do not touch each other and are ordered one by one: small ones by trying all sets of steps done so
// far, larger ones by taking the best next step, and then moving single steps as long as that helps.

#include "placement/change/step_order.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>
#include <set>
#include <utility>

#include "placement/change/order_search.h"

namespace zarven::tool {

namespace {

/// 2 to this power sets are tried, each against all that moves.
constexpr std::size_t most_tried_through = 14;
/// For a larger circle: the orders that are tried, each as much work as it has steps and moves.
constexpr std::size_t most_work = 50'000'000;

using Steps = std::vector<std::size_t>;

/// The circles of a graph, each after all that must be done before it (after Tarjan).
class Circles {
public:
    Circles(std::size_t steps, const std::vector<StepMove>& moves)
        : before_(steps), number_(steps), lowest_(steps), stands_(steps) {
        for (const StepMove& move : moves)
            for (const std::size_t leaves : move.leaves)
                for (const std::size_t comes : move.comes)
                    if (leaves != comes)
                        before_[leaves].insert(comes);
        for (std::size_t step = 0; step < steps; ++step)
            if (number_[step] == 0)
                visit(step);
    }

    const std::vector<Steps>& found() const { return found_; }

private:
    void visit(std::size_t root);
    void close(std::size_t step);

    std::vector<std::set<std::size_t>> before_;
    Steps number_;
    Steps lowest_;
    std::vector<bool> stands_;
    Steps stack_;
    std::size_t visited_ = 0;
    std::vector<Steps> found_;
};

void Circles::close(std::size_t step) {
    Steps circle;
    do {
        circle.push_back(stack_.back());
        stands_[stack_.back()] = false;
        stack_.pop_back();
    } while (circle.back() != step);
    std::sort(circle.begin(), circle.end());
    found_.push_back(std::move(circle));
}

/// Without recursion: a chain of steps can be as long as there are inputs.
void Circles::visit(std::size_t root) {
    struct Open {
        std::size_t step;
        std::set<std::size_t>::const_iterator next;
    };
    std::vector<Open> open;
    const auto enter = [&](std::size_t step) {
        number_[step] = lowest_[step] = ++visited_;
        stack_.push_back(step);
        stands_[step] = true;
        open.push_back({step, before_[step].begin()});
    };
    enter(root);
    while (!open.empty()) {
        Open& top = open.back();
        const std::size_t step = top.step;
        if (top.next != before_[step].end()) {
            const std::size_t other = *top.next++;
            if (number_[other] == 0)
                enter(other);
            else if (stands_[other])
                lowest_[step] = std::min(lowest_[step], number_[other]);
            continue;
        }
        open.pop_back();
        if (!open.empty())
            lowest_[open.back().step] = std::min(lowest_[open.back().step], lowest_[step]);
        if (lowest_[step] == number_[step])
            close(step);
    }
}

/// Steps that wait for each other, and what may be off the air meanwhile, by their numbers here.
struct Circle {
    Steps steps;
    std::vector<StepMove> moves;
};

/// Gives each move to the circle within which it stays. All others are on the air throughout.
std::vector<Circle> with_moves(const std::vector<Steps>& found, std::size_t steps,
                               const std::vector<StepMove>& moves) {
    std::vector<Circle> circles;
    Steps circle_of(steps);
    Steps number_of(steps);
    for (const Steps& circle : found) {
        for (std::size_t number = 0; number < circle.size(); ++number) {
            circle_of[circle[number]] = circles.size();
            number_of[circle[number]] = number;
        }
        circles.push_back({circle, {}});
    }
    for (const StepMove& move : moves) {
        if (move.leaves.empty() || move.comes.empty())
            continue;
        const std::size_t home = circle_of[move.leaves.front()];
        const auto numbers = [&](const Steps& of) {
            Steps made;
            for (const std::size_t step : of)
                if (circle_of[step] == home)
                    made.push_back(number_of[step]);
            return made;
        };
        StepMove numbered{numbers(move.leaves), numbers(move.comes)};
        if (numbered.leaves.size() == move.leaves.size() && numbered.comes.size() == move.comes.size())
            circles[home].moves.push_back(std::move(numbered));
    }
    return circles;
}

using Set = std::uint32_t;

/// How many are off the air when the steps of a set are done, for all sets.
std::vector<std::size_t> off_air_by_set(std::size_t steps, const std::vector<StepMove>& moves) {
    const auto set_of = [](const Steps& numbers) {
        Set set = 0;
        for (const std::size_t number : numbers)
            set |= Set{1} << number;
        return set;
    };
    std::vector<std::size_t> off(std::size_t{1} << steps);
    for (const StepMove& move : moves) {
        const Set leaves = set_of(move.leaves);
        const Set comes = set_of(move.comes);
        for (std::size_t done = 0; done < off.size(); ++done)
            if ((done & leaves) == leaves && (done & comes) == 0)
                ++off[done];
    }
    return off;
}

/// A circle that is small enough to be tried through. What remains to be done costs the same however the
/// steps that are done were ordered, so the sets are gone through from all done to none.
class SmallCircle {
public:
    explicit SmallCircle(const Circle& circle)
        : steps_(circle.steps.size()), off_(off_air_by_set(circle.steps.size(), circle.moves)) {}

    std::size_t least_peak() const {
        std::vector<std::size_t> peak(off_.size(), never);
        peak[all()] = 0;
        for (std::size_t done = all(); done-- > 0;)
            for_each_next(done, [&](std::size_t, std::size_t then) {
                peak[done] = std::min(peak[done], std::max(off_[then], peak[then]));
            });
        return peak[0];
    }

    /// The order with the least sum of those whose peak is not above this one, which one must keep.
    Steps order_under(std::size_t peak) const {
        std::vector<std::size_t> sum(off_.size(), never);
        sum[all()] = 0;
        Steps first(off_.size());
        for (std::size_t done = all(); done-- > 0;)
            for_each_next(done, [&](std::size_t step, std::size_t then) {
                if (off_[then] <= peak && sum[then] != never && off_[then] + sum[then] < sum[done]) {
                    sum[done] = off_[then] + sum[then];
                    first[done] = step;
                }
            });
        Steps order;
        for (std::size_t done = 0; done != all(); done |= std::size_t{1} << order.back())
            order.push_back(first[done]);
        return order;
    }

private:
    static constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

    std::size_t all() const { return off_.size() - 1; }

    template <class Use> void for_each_next(std::size_t done, Use use) const {
        for (std::size_t step = 0; step < steps_; ++step)
            if ((done >> step & 1) == 0)
                use(step, done | std::size_t{1} << step);
    }

    std::size_t steps_;
    std::vector<std::size_t> off_;
};

/// Takes the steps of a circle one by one, whichever leaves the fewest off the air next.
class NextBest {
public:
    explicit NextBest(const Circle& circle)
        : moves_(circle.moves), left_by_(circle.steps.size()), come_by_(circle.steps.size()),
          to_leave_(moves_.size()), has_come_(moves_.size()) {
        for (std::size_t move = 0; move < moves_.size(); ++move) {
            // An input may stand there twice.
            for (const std::size_t step :
                 std::set<std::size_t>(moves_[move].leaves.begin(), moves_[move].leaves.end())) {
                left_by_[step].push_back(move);
                ++to_leave_[move];
            }
            for (const std::size_t step : moves_[move].comes)
                come_by_[step].push_back(move);
        }
    }

    Steps order() && {
        Steps left(left_by_.size());
        std::iota(left.begin(), left.end(), std::size_t{0});
        Steps order;
        while (!left.empty()) {
            const auto best =
                std::min_element(left.begin(), left.end(), [this](std::size_t one, std::size_t other) {
                    return change_by(one) < change_by(other);
                });
            take(*best);
            order.push_back(*best);
            left.erase(best);
        }
        return order;
    }

private:
    /// What a step adds to those off the air.
    std::ptrdiff_t change_by(std::size_t step) const {
        std::ptrdiff_t change = 0;
        for (const std::size_t move : left_by_[step])
            if (to_leave_[move] == 1 && !has_come_[move] && !comes_by(move, step))
                ++change;
        for (const std::size_t move : come_by_[step])
            if (to_leave_[move] == 0 && !has_come_[move])
                --change;
        return change;
    }

    bool comes_by(std::size_t move, std::size_t step) const {
        const Steps& comes = moves_[move].comes;
        return std::find(comes.begin(), comes.end(), step) != comes.end();
    }

    void take(std::size_t step) {
        for (const std::size_t move : left_by_[step])
            --to_leave_[move];
        for (const std::size_t move : come_by_[step])
            has_come_[move] = true;
    }

    const std::vector<StepMove>& moves_;
    std::vector<Steps> left_by_;
    std::vector<Steps> come_by_;
    Steps to_leave_;
    std::vector<bool> has_come_;
};

} // namespace

std::vector<std::size_t> off_air_after(const std::vector<std::size_t>& order,
                                       const std::vector<StepMove>& moves) {
    std::vector<std::size_t> place(order.size());
    for (std::size_t at = 0; at < order.size(); ++at)
        place[order[at]] = at;
    // One more from the last that a service leaves, one less from the first on which it comes.
    std::vector<std::ptrdiff_t> change(order.size() + 1);
    for (const StepMove& move : moves) {
        if (move.leaves.empty() || move.comes.empty())
            continue;
        std::size_t leaves = 0;
        for (const std::size_t step : move.leaves)
            leaves = std::max(leaves, place[step]);
        std::size_t comes = order.size();
        for (const std::size_t step : move.comes)
            comes = std::min(comes, place[step]);
        if (leaves < comes) {
            ++change[leaves];
            --change[comes];
        }
    }
    std::vector<std::size_t> off;
    std::ptrdiff_t now = 0;
    for (std::size_t at = 0; at < order.size(); ++at)
        off.push_back(static_cast<std::size_t>(now += change[at]));
    return off;
}

StepOrder step_order(std::size_t steps, const std::vector<StepMove>& moves) {
    StepOrder order;
    const std::vector<Circle> circles = with_moves(Circles(steps, moves).found(), steps, moves);
    // Circles do not overlap in time, so one may take what another needs anyway.
    std::size_t peak = 0;
    std::vector<Steps> orders;
    for (const Circle& circle : circles) {
        orders.emplace_back();
        if (circle.steps.size() <= most_tried_through) {
            peak = std::max(peak, SmallCircle(circle).least_peak());
            continue;
        }
        order.is_least = false;
        const auto cost = [&circle](const Steps& steps_of_circle) {
            return cost_of(off_air_after(steps_of_circle, circle.moves));
        };
        orders.back() = improved_order(NextBest(circle).order(), cost,
                                       most_work / (circle.steps.size() + circle.moves.size()));
        peak = std::max(peak, cost(orders.back()).first);
    }
    for (std::size_t at = 0; at < circles.size(); ++at) {
        if (orders[at].empty())
            orders[at] = SmallCircle(circles[at]).order_under(peak);
        for (const std::size_t number : orders[at])
            order.steps.push_back(circles[at].steps[number]);
    }
    return order;
}

} // namespace zarven::tool
