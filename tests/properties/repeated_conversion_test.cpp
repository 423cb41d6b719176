// A conversion leaves nothing behind in the process: what a log gives does not depend on the logs before.
#include <gtest/gtest.h>

#include <vector>

#include "support/all_files.h"
#include "support/effort.h"
#include "support/random_log.h"

namespace {

TEST(RepeatedConversion, GivesTheSameFilesWhateverWasConvertedBefore) {
    for (const double version : {3.05, 4.0, 4.01}) {
        orbconv::RunOptions options;
        options.rinexVersion = version;
        std::vector<testsupport::RandomLog> logs;
        std::vector<testsupport::Files> first;
        for (unsigned seed = 1; seed <= testsupport::effort(40U, 5U); ++seed) {
            logs.emplace_back(testsupport::RandomLogForm{.seed = seed});
            first.push_back(testsupport::allFiles(logs.back().bytes(), options));
            ASSERT_GT(first.back().at('o').size(), 3000U);
        }
        for (std::size_t i = logs.size(); i-- > 0;) {
            ASSERT_EQ(testsupport::allFiles(logs[i].bytes(), options), first[i]) << i;
        }
    }
}

}  // namespace
