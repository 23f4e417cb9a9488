// The date and id the PDF writer leaves in a file: set in place, the same length, from
// SOURCE_DATE_EPOCH, so that the same drawing gives the same bytes.
#include <gtest/gtest.h>

#include "log/PdfStamp.h"

namespace pemlo::log {
namespace {

TEST(PdfStamp, SourceDateEpochIsWholeSecondsOrRefused)
{
    const struct {
        const char* value;
        std::optional<std::int64_t> seconds;
        bool refused;
    } cases[] = {
        {nullptr, std::nullopt, false}, {"", std::nullopt, false},   {"0", 0, false},
        {"1764067800", 1764067800, false}, {"-1", std::nullopt, true}, {"12s", std::nullopt, true},
        {"1e9", std::nullopt, true},    {"253402300800", std::nullopt, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value ? c.value : "(unset)");
        std::string error;
        EXPECT_EQ(SourceDateEpoch(c.value, error), c.seconds);
        EXPECT_EQ(!error.empty(), c.refused);
    }
    EXPECT_EQ(PdfDate(0), "D:19700101000000Z");
    EXPECT_EQ(PdfDate(1764067800), "D:20251125105000Z");
    EXPECT_EQ(PdfDate(253402300799), "D:99991231235959Z");
}

TEST(PdfStamp, DateAndIdAreSetInPlace)
{
    const std::string written = "1 0 obj\n<<\n/CreationDate (D:20261125104455Z)\n>>\nendobj\n"
                                "trailer\n<< /Size 2\n/ID [<0123456789abcdef0123456789abcdef> "
                                "<0123456789abcdef0123456789abcdef>]\n>>\n";
    std::string a = written;
    ASSERT_TRUE(StampPdf(a, 0));
    EXPECT_EQ(a.size(), written.size()) << "the cross-reference offsets would go wrong";
    EXPECT_NE(a.find("/CreationDate (D:19700101000000Z)"), std::string::npos);
    EXPECT_EQ(a.find("0123456789abcdef"), std::string::npos) << "the writer's random id was kept";

    std::string other = written;
    other.replace(other.find("D:2026"), 6, "D:2027");  // another run, another moment
    ASSERT_TRUE(StampPdf(other, 0));
    EXPECT_EQ(other, a);

    std::string noDate = "trailer\n<< /Size 2 >>\n";
    EXPECT_FALSE(StampPdf(noDate, 0)) << "a date asked for and not set must be said";
    EXPECT_TRUE(StampPdf(noDate, std::nullopt)) << "a file without an id needs none";
}

}  // namespace
}  // namespace pemlo::log
