#include "QTBPdmMessage.h"

#include <gtest/gtest.h>

TEST(PdmMessage, HoldsWeightTextAndItem)
{
    const QTBPdmMessage message(QTB_PDM_MESSAGE_WARNING, "Not released", "Part/4711/A");
    EXPECT_EQ(message.GetType(), QTB_PDM_MESSAGE_WARNING);
    EXPECT_EQ(message.GetText(), "Not released");
    EXPECT_EQ(message.GetPdmKey(), "Part/4711/A");
    EXPECT_EQ(QTBPdmMessage().GetType(), QTB_PDM_MESSAGE_INFORMATION);
}

TEST(PdmMessage, ListsAreAppendedCopiedAndEmptied)
{
    CATListValQTBPdmMessage messages;
    messages.Append(QTBPdmMessage(QTB_PDM_MESSAGE_ERROR, "first", ""));
    CATListValQTBPdmMessage more;
    more.Append(QTBPdmMessage(QTB_PDM_MESSAGE_ERROR, "second", ""));
    messages.Append(more);
    const CATListValQTBPdmMessage copy = messages;
    messages.RemoveAll();
    EXPECT_EQ(messages.Size(), 0);
    ASSERT_EQ(copy.Size(), 2);
    EXPECT_EQ(copy[2].GetText(), "second");
}
