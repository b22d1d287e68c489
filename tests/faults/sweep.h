// The allocation-failure sweep: a service is run in a fresh world with its
// 1st, 2nd, ... allocation failing until it runs without a failure. Every
// failed run must give the service's failure answer, and after every run
// (failed or not) nothing the service obtained may be left allocated.
#ifndef FENK_TEST_SWEEP_H
#define FENK_TEST_SWEEP_H

#include <string>
#include <vector>

#include "fenkapi.h"

namespace fenk::test {

// What a run gave: success, or the failure answer (a return code, or the
// value the raise jumped with). held: blocks the world keeps by design.
struct Outcome {
    bool ok;
    int answer = 0;
    int held = 0;
};
inline Outcome done(int held = 0) { return {true, 0, held}; }
inline Outcome failed(int answer) { return {false, answer, 0}; }
// A result that came back wrong (not a failure answer): the sweep reports it.
constexpr int kWrongResult = -1000;

enum class Fails {
    raises,   // a raise jumps with answer
    answers,  // a return code of answer
    null,     // a null result (answer 0)
    absorbs,  // the service carries on without the memory (answer 0)
};

enum class WorldKind { plain, catalog };

struct Service {
    const char* group;
    const char* name;
    WorldKind world;
    Fails fails;
    int answer;
    // Runs the service, checks its result, gives back what it made. It may
    // raise; it must leave nothing with a destructor on the stack.
    Outcome (*run)(KivGlobal* world);
    // What the application does after a failure to get its memory back.
    void (*afterFailure)(KivGlobal* world) = nullptr;
    const char* afterFailureText = "nothing";
};

struct SweepRow {
    std::string group, name;
    long allocations = 0;  // on the run without a failure
    std::string failure;   // "raises 8", "answers 12", "null", "carries on"
    std::string afterFailure;
    std::vector<std::string> faults;  // empty when the service passed
};

SweepRow sweep(const Service& service);

// Every service of every group, in group order.
std::vector<Service>& allServices();

// Adds a group's services at start-up (one static object per group file).
struct ServiceGroup {
    explicit ServiceGroup(std::vector<Service> services);
};

// The table row as docs/allocation-failures.md holds it.
std::string tableLine(const SweepRow& row);

}  // namespace fenk::test

#endif
