#include "QTBPdmNodeContAccess.h"

#include "QTBGlobVarsUtil.h"
#include "QTBXmlUtil.h"

CATIDOMDocument_var QTBPdmNodeContAccess::Parse(const std::string& xml)
{
    CATIDOMDocument_var spIDOMDocument;
    EXPECT_TRUE(SUCCEEDED(QTBXmlUtil::GetDomDocument(CATUnicodeString(xml), &spIDOMDocument)));
    return spIDOMDocument;
}

CATBaseUnknown_var QTBPdmNodeContAccess::CreateObject(const char* key, unsigned char bAddToContainer)
{
    CATBaseUnknown_var spNode;
    EXPECT_TRUE(SUCCEEDED(GetPdmNodeCont()->CreatePdmObjNode(key, &spNode, bAddToContainer)));
    return spNode;
}

CATBaseUnknown_var QTBPdmNodeContAccess::CreateRelation(const char* key, unsigned char bAddToContainer)
{
    CATBaseUnknown_var spNode;
    EXPECT_TRUE(SUCCEEDED(GetPdmNodeCont()->CreatePdmRelNode(key, &spNode, bAddToContainer)));
    return spNode;
}

int QTBPdmNodeContAccess::CurrentActionIndex()
{
    int iActionIndex = -1;
    EXPECT_TRUE(SUCCEEDED(QTBGlobVarsUtil::GetCurrentActionIndex(&iActionIndex)));
    return iActionIndex;
}
