// Runs the allocation-failure sweep over every service that allocates, and
// keeps docs/allocation-failures.md in step with what the sweep finds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "sweep.h"

namespace fenk::test {
namespace {

std::vector<Service> ordered() {
    std::vector<Service> services = allServices();
    std::stable_sort(services.begin(), services.end(), [](const Service& a, const Service& b) {
        return std::string(a.group) < b.group;
    });
    return services;
}

class AllocationFailure : public ::testing::TestWithParam<Service> {};

TEST_P(AllocationFailure, EveryFailureAnswersAndLeavesNothing) {
    SweepRow row = sweep(GetParam());
    for (const std::string& fault : row.faults) ADD_FAILURE() << row.name << ": " << fault;
    EXPECT_GT(row.allocations, 0) << row.name << " allocated nothing: no sweep took place";
}

std::string testName(const ::testing::TestParamInfo<Service>& info) {
    std::string name = std::to_string(info.index) + "_";
    for (const char* p = info.param.name; *p; ++p)
        name += std::isalnum(static_cast<unsigned char>(*p)) ? *p : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Library, AllocationFailure, ::testing::ValuesIn(ordered()), testName);

// The table in the docs lists every service with what the sweep finds now.
// FENK_FAULTS_TABLE=path writes the current table there.
TEST(AllocationFailureTable, DocsListEveryServiceAsSwept) {
    std::string table;
    for (const Service& s : ordered()) table += tableLine(sweep(s)) + "\n";
    if (const char* out = std::getenv("FENK_FAULTS_TABLE")) std::ofstream(out) << table;
    std::ifstream docs(FENK_SOURCE_DIR "/docs/allocation-failures.md");
    ASSERT_TRUE(docs) << "docs/allocation-failures.md is missing";
    std::stringstream text;
    text << docs.rdbuf();
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);)
        EXPECT_NE(text.str().find(line + "\n"), std::string::npos) << "not in the docs: " << line;
}

}  // namespace
}  // namespace fenk::test
