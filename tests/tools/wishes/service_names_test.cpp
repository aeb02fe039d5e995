// Names as people write them.

#include "wishes/service_names.h"

#include <gtest/gtest.h>

namespace zarven::tool::service_names_test {
namespace {

std::vector<Service> services(const std::vector<std::string>& names) {
    std::vector<Service> made;
    for (const std::string& name : names) {
        made.emplace_back();
        made.back().name = name;
        made.back().output_name = name;
    }
    return made;
}

using Places = ServiceNames::Places;

TEST(ServiceNames, APlainNameHasNoCaseBlanksAndAccents) {
    EXPECT_EQ(plain_name("Sky 1 +1 HD"), "sky1+1hd");
    EXPECT_EQ(plain_name("Ría-Cultura!"), "riacultura");
    EXPECT_EQ(plain_name("Why?"), "why");
    EXPECT_EQ(plain_name("ΕΡΤ1"), "ΕΡΤ1");
    EXPECT_EQ(plain_name(" . "), "");
}

TEST(ServiceNames, QualityStandsAtTheEnd) {
    EXPECT_EQ(without_quality("daserstehd"), "daserste");
    EXPECT_EQ(without_quality("daserstesd"), "daserste");
    EXPECT_EQ(without_quality("travel4k"), "travel");
    EXPECT_EQ(without_quality("rtluhd"), "rtl");
    EXPECT_EQ(without_quality("hd"), "hd");
    EXPECT_EQ(without_quality("hd1"), "hd1");
}

TEST(ServiceNames, TheExactNameComesFirst) {
    const ServiceNames names(services({"ORF 1", "ORF1", "orf1", "ORF1 HD"}));
    EXPECT_EQ(names.find("Orf1").services, (Places{1, 2}));
    EXPECT_TRUE(names.find("Orf1").is_exact);
    EXPECT_EQ(names.find("o r f 1").services, (Places{0, 1, 2}));
    EXPECT_FALSE(names.find("o r f 1").is_exact);
    EXPECT_EQ(names.find("orf1hd").services, Places{3});
    EXPECT_EQ(names.find("ORF 1 SD").services, (Places{0, 1, 2, 3}));
    EXPECT_TRUE(names.find("ORF 2").services.empty());
    EXPECT_TRUE(names.find("").services.empty());
}

TEST(ServiceNames, SentNamesAreNames) {
    std::vector<Service> sent = services({"A"});
    sent[0].output_name = "Bienvenida";
    EXPECT_EQ(ServiceNames(sent).find("bienvenida").services, Places{0});
    EXPECT_EQ(ServiceNames(sent).find("a").services, Places{0});
}

TEST(ServiceNames, TheNearestHasTheSameQualityIfThereIsOne) {
    const ServiceNames names(services({"Nickelodeon HD", "Nickelodeon", "Sport1 HD"}));
    EXPECT_EQ(names.nearest("Nickelodoen"), 1u);
    EXPECT_EQ(names.nearest("Nickelodoen HD"), 0u);
    EXPECT_EQ(names.nearest("Sport2"), 2u);
    EXPECT_EQ(names.nearest("Quizdom"), std::nullopt);
    EXPECT_EQ(ServiceNames({}).nearest("A"), std::nullopt);
}

} // namespace
} // namespace zarven::tool::service_names_test
