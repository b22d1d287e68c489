// Ordering (slot 325) and equality (slot 326) of TIME values: the listed
// cases, and generated pairs checked against the order of their texts.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "time_test_support.h"

namespace {

using fenk::test::TimeValueParser;

struct Pair { const char* a; const char* b; int32_t expected; };

// Each pair is checked both ways: the order turns round, -2 (no order) and
// equality do not.
TEST(TimeValueOrder, ListedPairsBothWays) {
    TimeValueParser p;
    const Pair cases[] = {
        // Comparable only when the components match.
        {"P1M", "P30D", -2}, {"P1Y0M", "P1Y", -2}, {"PT1.5H", "PT1.50H", -2},
        {"10:00+01:00", "09:00Z", -2}, {"10:00+01:00", "10:00-01:00", -2},
        {"10:00+01:00", "10:00+02:00", -2}, {"10:00", "10:00:00", -2}, {"2009-05", "2009-05-01", -2},
        {"20C", "2000", -2}, {"2009-01-01", "P1D", -2},
        {"2009-01-01/P1D", "2009-01-01/P1D", -2}, {"R/P1D", "R/P1D", -2},  // never ordered
        // Zero time differences of either sign, and with or without minutes.
        {"00:00+00:00", "00:00-00:00", 0}, {"10:00+01", "10:00+01:00", 0},
        {"10:00+01:00", "09:30+01:00", 1},  // differences are compared, never applied
        // Signed years and centuries; durations without carrying.
        {"-0005", "0004", -1}, {"-0005-01-01", "-0004-01-01", -1}, {"-05C", "04C", -1},
        {"12345", "9999", 1},  // a large year has no class bit
        {"1581-12-31", "1582-01-01", -1}, {"P1Y2M", "P14M", 1}, {"PT1H0M", "PT0H59M", 1},
        {"P2W", "P10W", -1}, {"PT1.5S", "PT1.4S", 1}, {"P4294967295D", "P1D", 1},  // unsigned
        {"12:00:00.5", "12:00:00.4", 1},
    };
    for (const Pair& c : cases) {
        KivTimeValue a = p.value(c.a), b = p.value(c.b);
        EXPECT_EQ(kivCompareTimeValues(&a, &b), c.expected) << c.a << " vs " << c.b;
        EXPECT_EQ(kivCompareTimeValues(&b, &a), c.expected == -2 ? -2 : -c.expected) << c.b << " vs " << c.a;
    }
}

TEST(TimeValueEquality, ListedPairsBothWays) {
    TimeValueParser p;
    const char* bare = "2009-01-01T10:00+01:00/2009-01-01T12:00";
    const Pair cases[] = {
        {"R2/P1D", "R2/P1D", 0}, {"R2/P1D", "R3/P1D", 1}, {"R/P1D", "P1D", 1}, {"P1D", "PT24H", 1},
        {"P1Y0M", "P1Y", 1}, {"P1W", "P1D", 1}, {"2009-01-01/P1D", "2009-01-01/P2D", 1},
        {"P1D/2009-01-02", "P1D/2009-01-03", 1}, {"2009-01-01/2009-01-02", "2009-01-01/2009-01-03", 1},
        {"00:00+00:00", "00:00-00:00", 0}, {"10:00+01:00", "10:00+02:00", 1}, {"20C", "20C", 0},
        {"1581-12-31", "1582-01-01", 1},
        // An end point takes the time difference of its start.
        {bare, "2009-01-01T10:00+01:00/2009-01-01T12:00+01:00", 0},
        {bare, "2009-01-01T10:00+01:00/2009-01-01T12:00+02:00", 1},
        {bare, "2009-01-01T10:00+01:00/2009-01-01T12:01+01:00", 1},
        {bare, "2009-01-01T10:00+01:00/2009-01-02T12:00+01:00", 1},
        {bare, "2009-01-01T10:00+01:00/2009-01-01T12:00-01:00", 1},
        // Without a difference on the start, ends must match as written.
        {"2009-01-01T10:00/2009-01-01T12:00", "2009-01-01T10:00/2009-01-01T12:00+01:00", 1},
    };
    for (const Pair& c : cases) {
        KivTimeValue a = p.value(c.a), b = p.value(c.b);
        EXPECT_EQ(kivTimeValuesDiffer(&a, &b), c.expected) << c.a << " vs " << c.b;
        EXPECT_EQ(kivTimeValuesDiffer(&b, &a), c.expected) << c.b << " vs " << c.a;
    }

    // The digits that wrote the number of recurrences are not compared, and
    // neither are the flags of a duration.
    KivTimeValue a = p.value("R12/P1Y0M"), b = p.value("R12/P1Y0M");
    b.recurrenceDigits = 5;
    b.first.duration.flags = 0;
    EXPECT_EQ(kivTimeValuesDiffer(&a, &b), 0);
    b.first.duration.months = 1;
    EXPECT_EQ(kivTimeValuesDiffer(&a, &b), 1);
}

// Generated values: a shape fixes the components and the widths of every
// number, so two values of one shape order as their texts do (time
// differences aside, which must match for the values to be comparable).
// key: the text without its time difference; zone: the time difference as compared.
struct Generated { std::string text; int shape; std::string key, zone; };

// Appends the parts (one string built in place, no temporaries).
template <class... Parts>
std::string join(const Parts&... parts) {
    std::string s;
    ((s += parts), ...);
    return s;
}

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    Generated next() {
        int shape = pick(14);
        std::string key = shape < 8 ? point(shape) : duration(shape - 8);
        std::string zone, written;
        if (shape >= 4 && shape < 8) {
            const char* zones[][2] = {{"", ""}, {"Z", "Z"}, {"+01:00", "+1"}, {"+01", "+1"},
                                      {"-01:00", "-1"}, {"+00:00", "0"}, {"-00:00", "0"}};
            int z = pick(7);
            written = zones[z][0];
            zone = zones[z][1];
        }
        return {join(key, written), shape, key, zone};
    }

private:
    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    std::string digits(int n) {
        std::string s;
        for (int i = 0; i < n; ++i) s += char('0' + pick(10));
        return s;
    }
    std::string number(int first, int last, size_t width) {
        std::string s = std::to_string(first + pick(last - first + 1));
        s.insert(0, width - s.size(), '0');
        return s;
    }
    std::string year() { return number(1000, 9999, 4); }
    std::string time(int parts) {
        std::string s = number(0, 23, 2);
        if (parts > 1) s += join(":", number(0, 59, 2));
        if (parts > 2) s += join(":", number(0, 59, 2), ".", digits(2));
        return s;
    }
    std::string point(int shape) {
        switch (shape) {
            case 0: return join(number(10, 99, 2), "C");
            case 1: return join(year(), "-", number(1, 12, 2));
            case 2: return join(year(), "-W", number(1, 53, 2), "-", number(1, 7, 1));
            case 3: return join(year(), "-", number(1, 365, 3));
            case 4: return join(year(), "-", number(1, 12, 2), "-", number(1, 28, 2), "T", time(3));
            case 5: return join(year(), "-", number(1, 365, 3), "T", time(2));
            case 6: return time(1);
            default: return time(3);
        }
    }
    // Single-digit numbers keep the widths fixed.
    std::string duration(int shape) {
        switch (shape) {
            case 0: return join("P", digits(1), "W");
            case 1: return join("P", digits(1), "Y", digits(1), "M");
            case 2: return join("P", digits(1), "DT", digits(1), "H", digits(1), "M", digits(1), "S");
            case 3: return join("PT", digits(1), "H", digits(1), ".", digits(3), "M");
            case 4: return join("P", digits(1), "Y", digits(1), "M", digits(1), "DT", digits(1), "H");
            default: return join("PT", digits(1), ",", digits(1), "S");
        }
    }

    std::mt19937 random_;
};

TEST(TimeValueOrder, GeneratedPairsOrderAsTheirTextsAndAntisymmetrically) {
    TimeValueParser p;
    Generator g(20091231);
    std::vector<Generated> texts;
    std::vector<KivTimeValue> values;
    for (int i = 0; i < 300; ++i) {
        texts.push_back(g.next());
        values.push_back(p.value(texts.back().text.c_str()));
    }
    int comparable = 0;
    for (size_t i = 0; i < values.size(); ++i) {
        for (size_t j = 0; j < values.size(); ++j) {
            const Generated &a = texts[i], &b = texts[j];
            int32_t r = kivCompareTimeValues(&values[i], &values[j]);
            int32_t s = kivCompareTimeValues(&values[j], &values[i]);
            int32_t d = kivTimeValuesDiffer(&values[i], &values[j]);
            if (a.shape != b.shape || a.zone != b.zone) {
                ASSERT_EQ(r, -2) << a.text << " vs " << b.text;
                ASSERT_EQ(d, 1) << a.text << " vs " << b.text;
                continue;
            }
            ++comparable;
            int want = a.key < b.key ? -1 : (a.key > b.key ? 1 : 0);
            ASSERT_EQ(r, want) << a.text << " vs " << b.text;
            ASSERT_EQ(s, -want) << b.text << " vs " << a.text;
            ASSERT_EQ(d, want != 0) << a.text << " vs " << b.text;
        }
    }
    EXPECT_GT(comparable, 5000);  // the generator must give enough comparable pairs
}

}  // namespace
