#pragma once

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "QTBMatchers.h"
#include "QTBSchemaUtil.h"

// Puts the project's schema in force with pieces of its text replaced. The next session has the schema as it is.
inline void QTBLoadEditedSchema(const std::vector<std::pair<std::string, std::string>>& edits)
{
    std::ifstream file(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml");
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    for (const auto& [from, to] : edits) {
        const std::size_t position = text.find(from);
        ASSERT_NE(position, std::string::npos) << from;
        text.replace(position, from.size(), to);
    }
    const std::string path = ::testing::TempDir() + "QTBEditedSchema-" + std::to_string(getpid()) + ".xml";
    std::ofstream(path) << text;
    EXPECT_THAT(QTBSchemaUtil::LoadSchema(path.c_str()), Succeeds());
    std::remove(path.c_str());
}
