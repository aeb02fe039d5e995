// Records as the tables of the manual describe them.

#include "records/key_tables.h"

#include <gtest/gtest.h>

#include "records/describe.h"
#include "records/made_records.h"

namespace zarven::tool::key_tables_test {
namespace {

using made_records::Picture;
using made_records::Tree;

TEST(KeyTable, TellsDefaultsAndRanges) {
    EXPECT_EQ(key_table(description_of<Tree>()), R"(| key | default | meaning |
|---|---|---|
| `name` | required | name of the tree |
| `nickname` | `name` | what it is called |
| `model` | 3 | only 3 |
| `height` | 7 | height in m, 0 to 4294967295 |
| `depth` | 0 | depth in m, -2147483648 to 2147483647 |
| `beauty` | 0 | how nice it is, 0 to 10 |
| `rings` | required | one a year |
| `old` | false | it is old |
| `evergreen` | 0 | like `model` |
| `weight` | 10 a meter | weight in kg, 0 to 4294967295 |
| `nest` | empty | who lives there |
| `eggs` | empty | of an old tree |
| `branches` | required | list: lengths, 0 to 4294967295 |
| `leaves` | empty | the leaves |
| `note` | empty | of an old tree |
)");
}

TEST(KeyTable, OfOthersHasWhatTheKnownRecordDoesNotTellAlike) {
    RecordDescription known = description_of<Tree>();
    known.fields.erase(known.fields.begin());
    known.fields.front().fallback_words = "nest";
    EXPECT_EQ(key_table_of_others(description_of<Tree>(), known), R"(| key | default | meaning |
|---|---|---|
| `name` | required | name of the tree |
| `nickname` | `name` | what it is called |
)");
}

TEST(MemberTables, TellTheDocumentAndTheRecordsWithin) {
    EXPECT_EQ(member_tables(description_of<Picture>()), R"(| member | value | meaning |
|---|---|---|
| `colour` | `red`, `green`, `blue` | its colour |
| `signed` | true | by the painter |
| `year`, `month` | number | when |
| `reason` | number | why red |
| `price` | number or null | if sold |
| `leaf` | **leaf** or null | if sold |
| `painted` | true or false | the year is known |
| `others` | list of `red`, `green`, `blue` | two more |

**leaf**: a leaf.

| member | value | meaning |
|---|---|---|
| `width` | number | width in mm |
)");
}

} // namespace
} // namespace zarven::tool::key_tables_test
