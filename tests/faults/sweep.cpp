#include "sweep.h"

#include <cstring>
#include <memory>

#include "catalog.h"
#include "fault_plan.h"
#include "support/raise_catcher.h"
#include "support/test_world.h"

namespace fenk::test {
namespace {

// No service needs more; a sweep that gets here is not ending.
constexpr long kMostAllocations = 2000;
constexpr const char* kOutOfMemory = "0008S: Out of memory; bytes requested: ";

struct Run {
    Outcome out;
    long left;         // blocks still allocated beyond what the world keeps
    bool noMessage;    // raised out of memory without composing its message
};

std::unique_ptr<TestWorld> makeWorld(WorldKind kind) {
    if (kind == WorldKind::plain) return std::make_unique<TestWorld>();
    auto world = std::make_unique<TestWorld>(&catalogControlTable);
    catalogInstall(world->get());
    return world;
}

std::string failureText(const Service& s) {
    switch (s.fails) {
        case Fails::raises: return "raises " + std::to_string(s.answer);
        case Fails::answers: return "answers " + std::to_string(s.answer);
        case Fails::null: return "null";
        case Fails::absorbs: return "carries on";
    }
    return "";
}

// Runs the service once with the k-th allocation failing.
Run runOnce(const Service& s, long k, FaultPlan& plan) {
    auto world = makeWorld(s.world);
    KivGlobal* w = world->get();
    w->messageOut = w->messageText;
    plan.failAt = k;
    plan.install(w);
    Outcome out{};
    Caught caught = catchRaise(w, [&] { out = s.run(w); });
    if (caught.raised) out = failed(caught.value);
    // A raise of out of memory that reaches the caller has composed its
    // message. (Guarded operations clear messageOut: theirs compose none.)
    const bool noMessage =
        caught.raised && out.answer == 8 && !std::strstr(w->messageText, kOutOfMemory);
    if (!out.ok && s.afterFailure) s.afterFailure(w);
    const long left = static_cast<long>(plan.live.size()) - out.held;
    plan.uninstall(w);
    return {out, left, noMessage};
}

}  // namespace

SweepRow sweep(const Service& s) {
    SweepRow row{s.group, s.name, 0, failureText(s), s.afterFailureText, {}};
    auto fault = [&](long k, const std::string& what) {
        row.faults.push_back("failing allocation " + std::to_string(k) + ": " + what);
    };
    for (long k = 1; k <= kMostAllocations; ++k) {
        FaultPlan plan;
        const Run run = runOnce(s, k, plan);
        const Outcome& out = run.out;
        if (run.left != 0) fault(k, std::to_string(run.left) + " blocks left allocated");
        if (run.noMessage) fault(k, "raised out of memory without its message");
        if (plan.strayFrees) fault(k, std::to_string(plan.strayFrees) + " frees of unknown blocks");
        if (out.answer == kWrongResult) fault(k, "wrong result");
        const bool failureHit = plan.attempts >= k;
        if (!failureHit) {
            if (!out.ok) fault(k, "failed with " + std::to_string(out.answer) + " without a failure");
            row.allocations = plan.attempts;
            return row;
        }
        const bool expected = s.fails == Fails::absorbs ? out.ok
                              : s.fails == Fails::null  ? !out.ok && out.answer == 0
                                                        : !out.ok && out.answer == s.answer;
        if (!expected)
            fault(k, out.ok ? "succeeded" : "answered " + std::to_string(out.answer));
        if (row.faults.size() > 5) return row;
    }
    fault(kMostAllocations, "no run without a failure");
    return row;
}

std::vector<Service>& allServices() {
    static std::vector<Service> services;
    return services;
}

ServiceGroup::ServiceGroup(std::vector<Service> services) {
    for (const Service& s : services) allServices().push_back(s);
}

std::string tableLine(const SweepRow& row) {
    return "| " + row.group + " | " + row.name + " | " + std::to_string(row.allocations) + " | " +
           row.failure + " | " + row.afterFailure + " | " +
           (row.faults.empty() ? "nothing left" : "FAULT") + " |";
}

}  // namespace fenk::test
