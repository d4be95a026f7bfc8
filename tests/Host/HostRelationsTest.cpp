#include "HostRelations.h"

#include <sstream>

#include <gmock/gmock.h>

#include "HostSession.h"
#include "QTBConstants.h"
#include "Shell.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class RelationsOfHost : public testing::Test
{
protected:
    // Name and direction of each.
    static std::vector<std::string> ToTexts(const CATListValQTBNodeRelationInfo& relations)
    {
        std::vector<std::string> texts;
        for (const QTBNodeRelationInfo& relation : relations) {
            texts.push_back(std::string(relation.GetRelationName().View()) +
                            (relation.GetRelationDirection() == usLEFT_TO_RIGHT ? " right" : " left"));
        }
        return texts;
    }
    static std::string Refusal(const std::string& text)
    {
        try {
            HostRelations::Parse(text);
        } catch (const HostError& error) {
            EXPECT_EQ(error.GetExitCode(), ExitCode::Usage);
            return error.what();
        }
        return "not refused";
    }

    HostSession m_Session{"", ""};
};

} // namespace

TEST_F(RelationsOfHost, AreFollowedToTheRightUnlessTheyNameTheLeft)
{
    EXPECT_THAT(ToTexts(HostRelations::Get({"PartPart", "PartFile:left", "FileFile:right"})),
                ElementsAre("PartPart right", "PartFile left", "FileFile right"));
    EXPECT_THAT(ToTexts(HostRelations::GetToExpand({"PartPart", "PartFile:left", "FileFile:right"})),
                ElementsAre("FileFile right", "PartFile left", "PartPart right"));
}

TEST_F(RelationsOfHost, AreAllOfTheSchemaToTheRightWhenNoneIsNamed)
{
    EXPECT_THAT(ToTexts(HostRelations::Get({})),
                ElementsAre("PartPart right", "StandardPartUsage right", "PartFile right", "PartDocument right",
                            "FileFile right", "DocumentFile right"));
    EXPECT_THAT(ToTexts(HostRelations::GetToExpand({})),
                ElementsAre("DocumentFile right", "FileFile right", "PartDocument right", "PartFile right",
                            "StandardPartUsage right", "PartPart right"));
}

TEST_F(RelationsOfHost, OfNoDirectionOrUnknownNameAreRefused)
{
    EXPECT_EQ(Refusal("PartPart:up"), "relation PartPart:up: the direction is left or right");
    EXPECT_EQ(Refusal("PartPart:"), "relation PartPart:: the direction is left or right");
    EXPECT_THAT(Refusal("NoSuchRelation:left"), AllOf(HasSubstr("the schema has no relation NoSuchRelation;"),
                                                      HasSubstr("PartPart, StandardPartUsage")));
    EXPECT_THAT(Refusal(":left"), HasSubstr("the schema has no relation ;"));
}

TEST_F(RelationsOfHost, AreNamedAlikeInTheShell)
{
    std::ostringstream output;
    Shell shell(m_Session, output);
    const auto say = [&](const std::string& line) {
        output.str("");
        shell.Execute(line);
        return output.str();
    };
    say("answer " QTB_SOURCE_DIR "/examples/as1/structure.xml");
    EXPECT_EQ(say("expand as1 PartPart:right"), "");
    EXPECT_THAT(say("tree"), HasSubstr("rod-assembly_1"));
    EXPECT_EQ(say("expand as1 PartPart:up"), "error: relation PartPart:up: the direction is left or right\n");
    EXPECT_THAT(shell.Complete("expand as1 Standard"), ElementsAre("StandardPartUsage"));
}
