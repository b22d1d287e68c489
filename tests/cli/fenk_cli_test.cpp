// The fenk command, run as a user runs it: output and exit status of each
// subcommand on good and bad input.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
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

TEST(FenkCli, UsageErrorsAnswerTwoAndHelpAnswersZero) {
    EXPECT_EQ(fenk("").status, 2);
    EXPECT_EQ(fenk("nonsense").status, 2);
    for (const char* command : {"demo", "entry", "time", "iso", "real", "hexdump", "xml",
                                "ber-length", "code"}) {
        SCOPED_TRACE(command);
        Result help = fenk(std::string(command) + " --help");
        EXPECT_EQ(help.status, 0);
        EXPECT_EQ(help.out.rfind("usage: fenk " + std::string(command), 0), 0u);
        EXPECT_EQ(fenk(std::string(command) + " --no-such-option").status, 2);
    }
    EXPECT_EQ(fenk("time check").status, 2);
    EXPECT_EQ(fenk("entry encode --rules per").status, 2);
    EXPECT_EQ(fenk("entry encode --serial 12x").status, 2);
    EXPECT_EQ(fenk("code twelve").status, 2);
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
    EXPECT_EQ(decoded.out,
              "value Entry ::= {\n  name \"Atlas\",\n  serial -2,\n  created "
              "\"20090520130507Z\",\n  flags '01'B,\n  digest '0AFF'H,\n  tags { \"a\", "
              "\"b\" }\n}\n");
    Result xml = fenk("entry encode --rules xer --name 'A<B' --tags '' --note ''");
    EXPECT_EQ(xml.status, 0);
    EXPECT_EQ(xml.out.rfind("<Entry><name>A&lt;B</name><serial>1234567</serial>", 0), 0u);
    EXPECT_NE(xml.out.find("<tags></tags></Entry>\n"), std::string::npos);
    Result print = fenk("entry print --serial 5 --tags ''");
    EXPECT_EQ(print.status, 0);
    EXPECT_NE(print.out.find("  serial 5,\n"), std::string::npos);
    EXPECT_NE(print.out.find("  tags {},\n"), std::string::npos);
}

TEST(FenkCli, EntryRefusalsAnswerOneWithTheMessage) {
    Result big = fenk("entry encode --name " + std::string(65, 'x'));
    EXPECT_EQ(big.status, 1);
    EXPECT_EQ(big.out.rfind("E0063S: Size constraint violated, length of value = 65; check "
                            "field 'name' (type: UTF8String) of PDU #1 'Entry'.\ncode 17: ",
                            0),
              0u);
    Result cut = fenk("entry decode", "303B0C05");
    EXPECT_EQ(cut.status, 1);
    EXPECT_EQ(cut.out.rfind("D0081S: End of input reached before message was fully decoded; "
                            "check PDU #1 'Entry'.\ncode 4: ",
                            0),
              0u);
    EXPECT_EQ(fenk("entry decode", "zz").status, 2);
}

TEST(FenkCli, TimeCommands) {
    Result ok = fenk("time check 20090520130507Z --rules der");
    EXPECT_EQ(ok.status, 0);
    EXPECT_EQ(ok.out, "20090520130507Z: a valid GeneralizedTime\n");
    Result local = fenk("time check 200905201305 --rules der");
    EXPECT_EQ(local.status, 1);
    EXPECT_EQ(local.out.rfind("0013S: Time value must be in universal coordinated time "
                              "format and must end with 'Z'.\ncode 12: ",
                              0),
              0u);
    EXPECT_EQ(fenk("time check 200905201305").status, 0);
    EXPECT_EQ(fenk("time check 0905201305Z --utc").out, "0905201305Z: a valid UTCTime\n");
    EXPECT_EQ(fenk("time seconds 20090520130507Z").out, "1242824707\n");
    EXPECT_EQ(fenk("time seconds 090520130507Z --utc").out, "1242824707\n");
    Result early = fenk("time seconds 19690520130507Z");
    EXPECT_EQ(early.status, 1);
    EXPECT_EQ(fenk("time from-seconds 1242824707 --offset 60").out, "20090520140507+0100\n");
    EXPECT_EQ(fenk("time from-seconds 1242824707 --utc").out, "090520130507Z\n");
    EXPECT_EQ(fenk("time from-seconds -1").status, 1);
}

TEST(FenkCli, IsoCommands) {
    EXPECT_EQ(fenk("iso parse R5/2009-05-20/P1D").out,
              "R5/2009-05-20/P1D: recurring interval, start and duration\n");
    Result bad = fenk("iso parse 2009-13");
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.out.rfind("0012S: Out-of-range value in time type. Month = 13.\n", 0), 0u);
    EXPECT_EQ(fenk("iso normalize 2009-05-20T13:05:00,5").out, "2009-05-20T13:05:00.5\n");
    EXPECT_EQ(fenk("iso compare 2009-05-20 2009-05-21").out, "earlier\n");
    EXPECT_EQ(fenk("iso compare P1D P1D").out, "equal\n");
    EXPECT_EQ(fenk("iso canonical 2009-05-20T13:05:00.5").status, 0);
    Result comma = fenk("iso canonical 2009-05-20T13:05:00,5");
    EXPECT_EQ(comma.status, 1);
    EXPECT_EQ(comma.out.rfind("0330E: Invalid canonical form of time value: 'full stops "
                              "should be used as decimal signs'.\ncode 5: ",
                              0),
              0u);
}

TEST(FenkCli, RealCommands) {
    EXPECT_EQ(fenk("real parse -12.50E-3").out, "sign -, digits 125, exponent -2\n");
    EXPECT_EQ(fenk("real canonical 12.50E-3").out, "1.25E-2\n");
    EXPECT_EQ(fenk("real compare 1.5 15E-1").out, "equal\n");
    EXPECT_EQ(fenk("real compare 1 2").out, "below\n");
    EXPECT_EQ(fenk("real print 3.25").out, "325E-2\n");
    Result bad = fenk("real parse 1.5E");
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.out, "1.5E: nothing after the exponent marker\n");
}

TEST(FenkCli, DumpsLengthsXmlAndCodes) {
    EXPECT_EQ(fenk("hexdump", "hello").out, "68656C6C 6F\n");
    EXPECT_EQ(fenk("hexdump --framed", "hello").out,
              "#   000000:   6865 6C6C 6F" + std::string(30, ' ') + " hello\n");
    EXPECT_EQ(fenk("xml --indent", "<a><b>x</b></a>").out, "<a>\n  <b>x</b>\n</a>\n");
    EXPECT_EQ(fenk("ber-length", "30 03 02 01 05 FF").out, "5\n");
    Result indefinite = fenk("ber-length", "3080");
    EXPECT_EQ(indefinite.status, 1);
    EXPECT_EQ(indefinite.out, "0\n");
    EXPECT_EQ(fenk("code 12").out, "12: Out of range value in time type\n");
    Result none = fenk("code 999");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "999: no such return code\n");
}

}  // namespace
