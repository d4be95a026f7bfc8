#include "CATDocumentServices.h"

#include <gtest/gtest.h>

#include "CATApplicationFrame.h"
#include "CATDocument.h"
#include "CATFrmLayout.h"
#include "CATFrmObjectEditor.h"
#include "CATIDocAlias.h"
#include "CATIEditor.h"
#include "CATIPersistent.h"
#include "CATInit.h"
#include "QTBTestLateType.h"
#include "TIECATIDocAlias.h"
#include "TIECATIEditor.h"
#include "TIECATIPersistent.h"
#include "TIECATInit.h"

namespace {

// What the extensions of the test documents were asked.
struct Record
{
    int inits = 0;
    unsigned char bDestroyExistingData = TRUE;
    int saves = 0;
    CATUnicodeString savedAs;
    CATUnicodeString loaded;
    unsigned char bReadOnly = FALSE;
    unsigned char bDirty = FALSE;
} g_Record;

class TestInit : public CATBaseUnknown
{
public:
    void Init(unsigned char bDestroyExistingData)
    {
        ++g_Record.inits;
        g_Record.bDestroyExistingData = bDestroyExistingData;
    }
    CATBaseUnknown* GetRootContainer(const char*) { return nullptr; }
};

class TestEditor : public CATBaseUnknown
{
public:
    CATFrmEditor* GetEditor()
    {
        if (m_pEditor == nullptr) {
            m_pEditor = CATFrmObjectEditor::Create(CATDocument::FromComponent(this));
        }
        return m_pEditor;
    }

private:
    CATFrmObjectEditor* m_pEditor = nullptr;
};

class TestPersistent : public CATBaseUnknown
{
public:
    unsigned char Dirty() { return g_Record.bDirty; }
    void Save() { ++g_Record.saves; }
    void SaveAs(const CATUnicodeString& storageName, unsigned char) { g_Record.savedAs = storageName; }
    void SaveAs_B(void*) {}
    void Load(const CATUnicodeString& storageName, unsigned char bReadOnly)
    {
        g_Record.loaded = storageName;
        g_Record.bReadOnly = bReadOnly;
    }
    void Load_B(void*) {}
};

class TestAlias : public CATBaseUnknown
{
public:
    CATUnicodeString GetAlias() { return "TestDoc"; }
};

class DocumentServices : public ::testing::Test
{
protected:
    DocumentServices()
    {
        g_Record = Record();
        m_Doc.Register<TIECATInit, CATInit, TestInit>()
            .Register<TIECATIEditor, CATIEditor, TestEditor>()
            .Register<TIECATIPersistent, CATIPersistent, TestPersistent>();
        m_Document.Register<TIECATIDocAlias, CATIDocAlias, TestAlias>();
        m_BareDoc.Register<TIECATInit, CATInit, TestInit>();
    }
    ~DocumentServices() override
    {
        while (CATDocumentServices::GetDocuments().Size() > 0) {
            CATDocumentServices::Remove(See(CATDocumentServices::GetDocuments()[1]));
        }
        CATApplicationFrame::GetFrame()->OpenLayout();
    }

    static CATDocument& See(const CATBaseUnknown_var& spDocument)
    {
        return *CATDocument::FromComponent(spDocument.Get());
    }

    static CATBaseUnknown_var New(const char* type)
    {
        CATBaseUnknown_var spDocument;
        EXPECT_EQ(CATDocumentServices::New(type, &spDocument), S_OK);
        return spDocument;
    }

    QTBTestLateType m_Doc{"TestDoc"};
    QTBTestLateType m_Document{"TestDocument"};
    QTBTestLateType m_BareDoc{"TestBareDoc"};
    const int m_Before = CATBaseUnknown::GetLiveComponentCount();
};

TEST_F(DocumentServices, MakesAndInitialisesADocumentOfALateType)
{
    const CATBaseUnknown_var spDocument = New("TestDoc");
    EXPECT_STREQ(spDocument->IsA(), "TestDoc");
    EXPECT_EQ(g_Record.inits, 1);
    EXPECT_EQ(g_Record.bDestroyExistingData, FALSE);
    EXPECT_TRUE(See(spDocument).GetStorageName().IsEmpty());
    ASSERT_EQ(CATDocumentServices::GetDocuments().Size(), 1);
    EXPECT_EQ(CATDocumentServices::GetDocuments()[1], spDocument);
}

TEST_F(DocumentServices, FindsTheLateTypeOfADocumentTypeByItsAlias)
{
    EXPECT_STREQ(New("TestDocument")->IsA(), "TestDoc");
}

TEST_F(DocumentServices, RefusesWhatIsNoDocumentType)
{
    QTBTestLateType noDocument("TestNoDocument");
    CATBaseUnknown_var spDocument;
    EXPECT_EQ(CATDocumentServices::New("NoSuchType", &spDocument), E_FAIL);
    EXPECT_EQ(CATDocumentServices::New("TestNoDocument", &spDocument), E_FAIL);
    EXPECT_EQ(CATDocumentServices::New("TestDoc", nullptr), E_POINTER);
    EXPECT_EQ(spDocument, NULL_var);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_Before);
}

TEST_F(DocumentServices, SeesADocumentInAnyInterfaceOfIt)
{
    const CATBaseUnknown_var spDocument = New("TestDoc");
    const CATIEditor_var spIEditor(spDocument);
    EXPECT_EQ(CATDocument::FromComponent(spIEditor.Get()), &See(spDocument));
    EXPECT_EQ(CATDocument::FromComponent(nullptr), nullptr);
    EXPECT_EQ(CATDocument::FromComponent(m_Doc.Create().Get()), nullptr);
}

TEST_F(DocumentServices, LoadsADocumentAndGivesTheLoadedOneTheNextTime)
{
    CATBaseUnknown_var spDocument;
    EXPECT_EQ(CATDocumentServices::Open("TestDocument", "/tmp/a.Test", TRUE, &spDocument), S_OK);
    EXPECT_EQ(g_Record.loaded, "/tmp/a.Test");
    EXPECT_EQ(g_Record.bReadOnly, TRUE);
    EXPECT_EQ(See(spDocument).GetStorageName(), "/tmp/a.Test");
    CATBaseUnknown_var spAgain;
    EXPECT_EQ(CATDocumentServices::Open("TestDocument", "/tmp/a.Test", TRUE, &spAgain), S_OK);
    EXPECT_EQ(spAgain, spDocument);
    EXPECT_EQ(g_Record.inits, 1);
}

TEST_F(DocumentServices, DoesNotKeepADocumentThatCannotBeLoaded)
{
    CATBaseUnknown_var spDocument;
    EXPECT_EQ(CATDocumentServices::Open("TestBareDoc", "/tmp/a.Test", FALSE, &spDocument), E_FAIL);
    EXPECT_EQ(CATDocumentServices::Open("TestBareDoc", "/tmp/a.Test", FALSE, nullptr), E_POINTER);
    EXPECT_EQ(CATDocumentServices::Open("NoSuchType", "/tmp/a.Test", FALSE, &spDocument), E_FAIL);
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);
}

TEST_F(DocumentServices, FindsADocumentInSessionByItsStorageName)
{
    CATBaseUnknown_var spDocument;
    ASSERT_EQ(CATDocumentServices::Open("TestDoc", "/tmp/folder/a.Test", FALSE, &spDocument), S_OK);
    New("TestDoc");
    CATDocument* pDocument = nullptr;
    EXPECT_EQ(CATDocumentServices::GetDocumentInSession("/tmp/folder/a.Test", &pDocument), S_OK);
    EXPECT_EQ(pDocument, &See(spDocument));
    EXPECT_EQ(CATDocumentServices::GetDocumentInSession("a.Test", &pDocument), E_FAIL);
    EXPECT_EQ(pDocument, nullptr);
    EXPECT_EQ(CATDocumentServices::GetDocumentInSession("", &pDocument), E_FAIL);
    EXPECT_EQ(CATDocumentServices::GetDocumentInSession("a.Test", nullptr), E_POINTER);
    EXPECT_TRUE(CATDocumentServices::FileIsInSession("a.Test"));
    EXPECT_FALSE(CATDocumentServices::FileIsInSession("b.Test"));
    EXPECT_FALSE(CATDocumentServices::FileIsInSession(""));
}

TEST_F(DocumentServices, HasADocumentSaveItself)
{
    CATDocument& document = See(New("TestDoc"));
    EXPECT_EQ(CATDocumentServices::Save(document), S_OK);
    EXPECT_EQ(g_Record.saves, 1);
    EXPECT_EQ(CATDocumentServices::SaveAs(document, "/tmp/b.Test"), S_OK);
    EXPECT_EQ(g_Record.savedAs, "/tmp/b.Test");
    CATDocument& bare = See(New("TestBareDoc"));
    EXPECT_EQ(CATDocumentServices::Save(bare), E_FAIL);
    EXPECT_EQ(CATDocumentServices::SaveAs(bare, "/tmp/b.Test"), E_FAIL);
}

TEST_F(DocumentServices, KnowsThatADocumentIsDirtyByWordOrByItself)
{
    CATDocument& document = See(New("TestDoc"));
    EXPECT_FALSE(document.IsDirty());
    document.SetDirty(TRUE);
    EXPECT_TRUE(document.IsDirty());
    document.SetDirty(FALSE);
    g_Record.bDirty = TRUE;
    EXPECT_TRUE(document.IsDirty());
    EXPECT_FALSE(See(New("TestBareDoc")).IsDirty());
}

TEST_F(DocumentServices, LetGoOfADocumentWhoseEditorIsClosed)
{
    {
        const CATIEditor_var spIEditor(New("TestDoc"));
        auto* pEditor = spIEditor->GetEditor();
        EXPECT_EQ(pEditor->GetDocument(), CATDocument::FromComponent(spIEditor.Get()));
        CATFrmWindow::Create("window", pEditor);
    }
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_Before + 1);
    CATFrmLayout::GetCurrentLayout()->CloseWindow(CATFrmLayout::GetCurrentLayout()->GetCurrentWindow());
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_Before);
}

TEST_F(DocumentServices, CloseEditorAndWindowsOfADocumentThatIsRemoved)
{
    const CATBaseUnknown_var spStays = New("TestDoc");
    CATIEditor_var(spStays)->GetEditor();
    CATBaseUnknown_var spDocument = New("TestDoc");
    CATFrmWindow::Create("window", CATIEditor_var(spDocument)->GetEditor());
    CATDocumentServices::Remove(See(spDocument));
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout()->GetWindowList().Size(), 0);
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout()->GetEditorList().Size(), 1);
    ASSERT_EQ(CATDocumentServices::GetDocuments().Size(), 1);
    EXPECT_EQ(CATDocumentServices::GetDocuments()[1], spStays);
}

TEST_F(DocumentServices, RemoveADocumentWithoutEditorOrLayout)
{
    CATApplicationFrame::GetFrame()->CloseLayout();
    CATDocumentServices::Remove(See(New("TestDoc")));
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_Before);
    EXPECT_EQ(CATFrmObjectEditor::Create(&See(New("TestDoc"))), nullptr);
}

TEST_F(DocumentServices, GiveNoEditorWithoutADocument)
{
    EXPECT_EQ(CATFrmObjectEditor::Create(nullptr), nullptr);
}

} // namespace
