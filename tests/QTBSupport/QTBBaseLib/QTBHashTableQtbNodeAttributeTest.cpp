#include "QTBHashTableQtbNodeAttribute.h"

#include <gtest/gtest.h>

#include "CATHashTabQTBHashTableAttribute.h"
#include "CATXMLDocumentFactory.h"
#include "QTBHashTableUtil.h"
#include "QTBXmlElement.h"

namespace {

TEST(HashTableQtbNodeAttribute, HoldsTheNodeWhileItIsInTheTable)
{
    const int before = CATXMLDocumentFactory::GetLiveDocumentCount();
    CATBaseUnknown_var spNode = ReadXmlElement("<node/>");
    CATHashTabQTBHashTableAttribute table(&QTBHashTableQtbNodeAttribute::Hash, &QTBHashTableQtbNodeAttribute::Compare,
                                          100);
    ASSERT_EQ(QTBHashTableUtil::Insert(new QTBHashTableQtbNodeAttribute("Key", spNode), &table, TRUE, FALSE), S_OK);
    QTBHashTableQtbNodeAttribute* pEntry = nullptr;
    ASSERT_EQ(QTBHashTableUtil::Find("Key", &table, &pEntry, TRUE), S_OK);
    EXPECT_TRUE(pEntry->GetValue() == spNode);
    spNode = NULL_var;
    EXPECT_EQ(CATXMLDocumentFactory::GetLiveDocumentCount(), before + 1);
    ASSERT_EQ(QTBHashTableUtil::Remove("Key", &table, TRUE, FALSE), S_OK);
    EXPECT_EQ(CATXMLDocumentFactory::GetLiveDocumentCount(), before);
}

} // namespace
