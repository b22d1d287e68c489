// The fenk command, run as a user runs it: output and exit status of each
// subcommand on good and bad input.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct Result {
    int status;
    std::string out;
};

// Runs fenk with the arguments (a shell word list) and the given stdin.
Result fenk(const std::string& arguments, const std::string& input = "") {
    char path[] = "/tmp/fenk-cli-XXXXXX";
    int fd = mkstemp(path);
    EXPECT_GE(fd, 0);
    EXPECT_EQ(write(fd, input.data(), input.size()), static_cast<ssize_t>(input.size()));
    close(fd);
    std::string command = std::string(FENK_BINARY) + " " + arguments + " <" + path + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    char chunk[4096];
    size_t n;
    while ((n = fread(chunk, 1, sizeof chunk, pipe)) > 0) out.append(chunk, n);
    int status = pclose(pipe);
    unlink(path);
    return Result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST(FenkCli, HelpAnswersZeroAndUnknownOptionsTwo) {
    for (const char* command : {"demo", "entry", "time", "iso", "xsd", "real", "hexdump", "xml",
                                "ber-length", "code"}) {
        SCOPED_TRACE(command);
        Result help = fenk(std::string(command) + " --help");
        EXPECT_EQ(help.status, 0);
        EXPECT_EQ(help.out.rfind("usage: fenk " + std::string(command), 0), 0u);
        EXPECT_EQ(fenk(std::string(command) + " --no-such-option").status, 2);
    }
}

// One command each: its exit status and its whole output, or (prefix) how
// the output begins; no output given: the status alone.
TEST(FenkCli, EachCommandsStatusAndOutput) {
    struct Case {
        std::string arguments;
        int status;
        const char* out = nullptr;
        bool prefix = false;
        const char* input = "";
    };
    const Case cases[] = {
        {"", 2},
        {"nonsense", 2},
        {"time check", 2},
        {"entry encode --rules per", 2},
        {"entry encode --serial 12x", 2},
        {"code twelve", 2},
        {"entry decode", 2, nullptr, false, "zz"},
        {"entry encode --name " + std::string(65, 'x'), 1,
         "E0063S: Size constraint violated, length of value = 65; check field 'name' (type: "
         "UTF8String) of PDU #1 'Entry'.\ncode 17: ", true},
        {"entry decode", 1,
         "D0081S: End of input reached before message was fully decoded; check PDU #1 "
         "'Entry'.\ncode 4: ", true, "303B0C05"},
        {"time check 20090520130507Z --rules der", 0, "20090520130507Z: a valid GeneralizedTime\n"},
        {"time check 200905201305 --rules der", 1,
         "0013S: Time value must be in universal coordinated time format and must end with "
         "'Z'.\ncode 12: ", true},
        {"time check 200905201305", 0},
        {"time check 0905201305Z --utc", 0, "0905201305Z: a valid UTCTime\n"},
        {"time seconds 20090520130507Z", 0, "1242824707\n"},
        {"time seconds 090520130507Z --utc", 0, "1242824707\n"},
        {"time seconds 19690520130507Z", 1},
        {"time from-seconds 1242824707 --offset 60", 0, "20090520140507+0100\n"},
        {"time from-seconds 1242824707 --utc", 0, "090520130507Z\n"},
        {"time from-seconds -1", 1},
        {"iso parse R5/2009-05-20/P1D", 0, "R5/2009-05-20/P1D: recurring interval, start and duration\n"},
        {"iso parse 2009-13", 1, "0012S: Out-of-range value in time type. Month = 13.\n", true},
        {"iso normalize 2009-05-20T13:05:00,5", 0, "2009-05-20T13:05:00.5\n"},
        {"iso compare 2009-05-20 2009-05-21", 0, "earlier\n"},
        {"iso compare P1D P1D", 0, "equal\n"},
        {"iso canonical 2009-05-20T13:05:00.5", 0},
        {"iso canonical 2009-05-20T13:05:00,5", 1,
         "0330E: Invalid canonical form of time value: 'full stops should be used as decimal "
         "signs'.\ncode 5: ", true},
        {"xsd parse dateTime 2009-05-20T13:05:00.5-05:30", 0,
         "year=2009\nmonth=5\nday=20\nhour=13\nminute=5\nsecond=0\nfraction=5\nzone=-330\n"},
        {"xsd parse gMonthDay --05-31", 0, "month=5\nday=31\nzone=none\n"},
        {"xsd parse gMonthDay --05-32", 1, "code 12: ", true},
        {"xsd parse duration -P1DT2H", 0,
         "negative=1\nyear=0\nmonth=0\nday=1\nhour=2\nminute=0\nsecond=0\n"},
        {"xsd format date year=2009 month=5 day=20 zone=Z", 0, "2009-05-20Z\n"},
        {"xsd format gDay day=15 zone=+60", 0, "---15+01:00\n"},
        {"xsd format duration year=1 minute=30 second=0 fraction=25", 0, "P1YT30M0.25S\n"},
        {"xsd format time hour=25", 1, "code 12: ", true},
        {"xsd format date month=x", 2},
        {"xsd parse week 2009", 2},
        {"real parse -12.50E-3", 0, "sign -, digits 125, exponent -2\n"},
        {"real canonical 12.50E-3", 0, "1.25E-2\n"},
        {"real compare 1.5 15E-1", 0, "equal\n"},
        {"real compare 1 2", 0, "below\n"},
        {"real print 3.25", 0, "325E-2\n"},
        {"real parse 1.5E", 1, "1.5E: nothing after the exponent marker\n"},
        {"hexdump", 0, "68656C6C 6F\n", false, "hello"},
        {"hexdump --framed", 0, "#   000000:   6865 6C6C 6F                               hello\n", false,
         "hello"},
        {"xml --indent", 0, "<a>\n  <b>x</b>\n</a>\n", false, "<a><b>x</b></a>"},
        {"ber-length", 0, "5\n", false, "30 03 02 01 05 FF"},
        {"ber-length", 1, "0\n", false, "3080"},
        {"code 12", 0, "12: Out of range value in time type\n"},
        {"code 999", 1, "999: no such return code\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.arguments);
        Result r = fenk(c.arguments, c.input);
        EXPECT_EQ(r.status, c.status);
        if (c.out) {
            EXPECT_EQ(c.prefix ? r.out.substr(0, std::strlen(c.out)) : r.out, c.out);
        }
    }
}

TEST(FenkCli, DemoShowsEveryStep) {
    Result r = fenk("demo");
    EXPECT_EQ(r.status, 0);
    for (const char* piece :
         {"The input to the encoder:\n\nvalue Entry ::= {\n  name \"Maps & Charts\",",
          "#   000000:   305F 0C0D 4D61 7073 2026 2043 6861 7274    0_..Maps & Chart\n",
          "The decoder output:\n\nvalue Entry ::= {",
          "  tags { \"2026\", \"Archive\", \"reference\" },",
          "kivCopyValue answered 0\nkivCompareValue(decoded, copy) answered 0: equal\n"
          "kivCompareValue(sample, copy) answered 0: equal\n"
          "kivCompareValue(sample, copy with serial + 1) answered 1: different\n",
          "<Entry>\n  <name>Maps &amp; Charts</name>\n",
          "kivDecodePdu answered 12\nD0012S: Out-of-range value in time type. Month = 13; "
          "check field 'created' (type: GeneralizedTime) of PDU #1 'Entry'.\n"
          "code 12: Out of range value in time type\n"}) {
        EXPECT_NE(r.out.find(piece), std::string::npos) << piece;
    }
}

TEST(FenkCli, EntryEncodesDecodesAndPrints) {
    Result der = fenk("entry encode --name Atlas --serial -2 --created 20090520130507Z "
                   "--flags 01 --digest 0aff --tags b,a --note ''");
    ASSERT_EQ(der.status, 0) << der.out;
    const std::string hex =
        "302B0C0541746C61730201FE180F32303039303532303133303530375A0302064004020AFF3106"
        "130161130162\n";
    EXPECT_EQ(der.out, hex);
    // BER keeps the SET OF in the order given.
    EXPECT_EQ(fenk("entry encode --rules ber --name Atlas --serial -2 --created "
                   "20090520130507Z --flags 01 --digest 0aff --tags b,a --note ''")
                  .out,
              "302B0C0541746C61730201FE180F32303039303532303133303530375A0302064004020AFF3106"
              "130162130161\n");
    Result decoded = fenk("entry decode", hex);
    EXPECT_EQ(decoded.status, 0);
    EXPECT_EQ(decoded.out, "value Entry ::= {\n  name \"Atlas\",\n  serial -2,\n  created "
                           "\"20090520130507Z\",\n  flags '01'B,\n  digest '0AFF'H,\n  tags "
                           "{ \"a\", \"b\" }\n}\n");
    Result xml = fenk("entry encode --rules xer --name 'A<B' --tags '' --note ''");
    EXPECT_EQ(xml.status, 0);
    EXPECT_EQ(xml.out.rfind("<Entry><name>A&lt;B</name><serial>1234567</serial>", 0), 0u);
    EXPECT_NE(xml.out.find("<tags></tags></Entry>\n"), std::string::npos);
    Result print = fenk("entry print --serial 5 --tags ''");
    EXPECT_EQ(print.status, 0);
    EXPECT_NE(print.out.find("  serial 5,\n"), std::string::npos);
    EXPECT_NE(print.out.find("  tags {},\n"), std::string::npos);
}

}  // namespace
