#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATIPrdLink.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "CATPrdStructure.h"
#include "CATPrdXmlReader.h"
#include "CATProductServices.h"

// A session with product documents, empty at the start of a test. At its end all documents are closed, and no component
// may be left.
class CATProductTestSession : public testing::Test
{
protected:
    CATProductTestSession() : m_LiveComponents(CATBaseUnknown::GetLiveComponentCount()) {}

    void TearDown() override
    {
        CloseAll();
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_LiveComponents);
    }

    static void CloseAll()
    {
        CATDocumentServices::RemoveAll();
        EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);
    }

    // Opens what stands between <products> and </products>. The result of the operation.
    static HRESULT TryOpen(const std::string& content)
    {
        CATPrdStructure structure;
        const std::string xml = "<products>" + content + "</products>";
        const HRESULT hr = CATPrdXmlReader::ReadText(CATUnicodeString(std::string_view(xml)), "text", &structure);
        return SUCCEEDED(hr) ? CATProductServices::Open(structure, nullptr) : hr;
    }
    static void Open(const std::string& content)
    {
        const HRESULT hr = TryOpen(content);
        const CATError* pError = CATError::CATGetLastError(hr, nullptr);
        ASSERT_EQ(hr, S_OK) << (pError != nullptr ? pError->GetNLSMessage().ConvertToChar() : "");
    }

    static CATIProduct_var Root(const char* partNumber)
    {
        CATIProduct_var spRoot;
        CATProductServices::FindRootProduct(partNumber, &spRoot);
        EXPECT_TRUE(spRoot != NULL_var) << partNumber;
        return spRoot;
    }

    static CATListValCATBaseUnknown_var Children(const CATIProduct_var& spProduct)
    {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spProduct->GetChildren("CATIProduct"));
        return *pChildren;
    }

    // The child at that position, counted from 1.
    static CATIProduct_var Child(const CATIProduct_var& spProduct, int position)
    {
        return CATIProduct_var(Children(spProduct)[position]);
    }

    // Names of the children, each with a blank behind.
    static std::string ChildNames(const CATIProduct_var& spProduct)
    {
        std::string names;
        for (const CATBaseUnknown_var& spChild : Children(spProduct)) {
            names.append(Name(CATIProduct_var(spChild))).append(" ");
        }
        return names;
    }

    static std::string Name(const CATIProduct_var& spProduct)
    {
        CATUnicodeString usName;
        return SUCCEEDED(spProduct->GetPrdInstanceName(&usName)) ? usName.ConvertToChar() : "(no name)";
    }

    static CATDocument* DocumentOf(const CATIProduct_var& spProduct)
    {
        CATDocument* pDocument = nullptr;
        CATIPrdLink_var(spProduct)->GetDocument(&pDocument);
        return pDocument;
    }

    static std::string FileOf(const CATIProduct_var& spProduct)
    {
        CATUnicodeString usStorageName;
        return SUCCEEDED(CATIPrdLink_var(spProduct)->GetLinkedFileName(&usStorageName)) ? usStorageName.ConvertToChar()
                                                                                        : "(no file)";
    }

    // Files of all documents of the session, each with a blank behind.
    static std::string SessionFiles()
    {
        std::string files;
        for (const CATBaseUnknown_var& spDocument : CATDocumentServices::GetDocuments()) {
            files.append(CATDocument::FromComponent(spDocument.Get())->GetStorageName().ConvertToChar()).append(" ");
        }
        return files;
    }

private:
    const int m_LiveComponents;
};
