#pragma once

#include <unordered_map>

#include "CATDocument.h"
#include "CATError.h"
#include "CATIPrdLink.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBTestLateType.h"
#include "TIECATIPrdLink.h"
#include "TIECATIPrdProperties.h"
#include "TIECATIProduct.h"

// What a product answers. A result that is a failure is that of the operations beside which it stands.
struct QTBFakeProductData
{
    CATBaseUnknown_var spFather{};
    CATListValCATBaseUnknown_var Children{};
    bool givesNoList = false;
    bool isReference = false;
    bool hasReference = true;
    CATUnicodeString usPartNumber{};
    CATUnicodeString usInstanceName = "Fake.1";
    HRESULT instanceNameResult = S_OK;
    CATUnicodeString usNomenclature{};
    HRESULT getResult = S_OK;
    HRESULT setResult = S_OK;
    HRESULT linkResult = S_OK;
    CATPrdLinkState linkState = CATPrdLinkState::Visualization;
    CATUnicodeString usLinkedFileName = "/data/fake.CATProduct";
    CATDocument* pDocument = nullptr;
    // A null document is given as if it were there.
    bool givesNullDocument = false;
    bool raisesInInstanceName = false;
};

// Products that say what a test tells them to, for what products of the session never do: they fail, contradict
// themselves or lack an interface. One set of them lives at a time.
class QTBFakeProducts
{
public:
    using Data = QTBFakeProductData;

    QTBFakeProducts()
    {
        m_Type.Register<TIECATIProduct, CATIProduct, Product>()
            .Register<TIECATIPrdLink, CATIPrdLink, Link>()
            .Register<TIECATIPrdProperties, CATIPrdProperties, Properties>();
        m_PlainType.Register<TIECATIProduct, CATIProduct, Product>().Register<TIECATIPrdLink, CATIPrdLink, Link>();
    }
    QTBFakeProducts(const QTBFakeProducts&) = delete;
    QTBFakeProducts& operator=(const QTBFakeProducts&) = delete;
    ~QTBFakeProducts() { Products().clear(); }

    // A product that answers all that a product does.
    CATBaseUnknown_var Create(const Data& data = Data()) const { return Enter(m_Type, data); }
    // A product that answers no interface of the PDM integration.
    CATBaseUnknown_var CreatePlain(const Data& data = Data()) const { return Enter(m_PlainType, data); }

    // Enters a component of a late type of the test's own, which uses the extensions below.
    static CATBaseUnknown_var Enter(const QTBTestLateType& type, const Data& data)
    {
        const CATBaseUnknown_var spProduct = type.Create();
        Products()[spProduct.Get()] = data;
        return spProduct;
    }
    static Data& DataOf(const CATBaseUnknown_var& spProduct) { return Products()[spProduct.Get()]; }

    class Product : public CATBaseUnknown
    {
    public:
        CATIProduct_var GetFatherProduct() { return Mine().spFather; }
        CATListValCATBaseUnknown_var* GetChildren(const char*)
        {
            return Mine().givesNoList ? nullptr : new CATListValCATBaseUnknown_var(Mine().Children);
        }
        HRESULT IsReference() { return Mine().isReference ? S_OK : E_FAIL; }
        CATIProduct_var GetReferenceProduct()
        {
            return Mine().hasReference ? CATIProduct_var(this) : CATIProduct_var();
        }
        HRESULT GetPrdInstanceName(CATUnicodeString* pusInstanceName)
        {
            if (Mine().raisesInInstanceName) {
                CATError::Throw(__FILE__, __LINE__, new CATInternalError("FakeERR_1", "QTBFake"));
            }
            return Give(Mine().usInstanceName, Mine().instanceNameResult, pusInstanceName);
        }
        HRESULT SetPrdInstanceName(const CATUnicodeString&) { return E_FAIL; }
        CATUnicodeString GetPartNumber() { return Mine().usPartNumber; }
        HRESULT SetPartNumber(const CATUnicodeString&) { return E_FAIL; }
        HRESULT GetNomenclature(CATUnicodeString* pusValue) { return Get(pusValue); }
        HRESULT GetDescriptionRef(CATUnicodeString* pusValue) { return Get(pusValue); }
        HRESULT GetDefinition(CATUnicodeString* pusValue) { return Get(pusValue); }
        HRESULT GetRevision(CATUnicodeString* pusValue) { return Get(pusValue); }
        HRESULT AddChild(const CATIProduct_var&, const CATUnicodeString&, CATIProduct_var*) { return E_FAIL; }
        HRESULT RemoveChild(const CATIProduct_var&) { return E_FAIL; }

    private:
        Data& Mine() const { return Products()[GetImpl()]; }
        HRESULT Get(CATUnicodeString* pusValue) const
        {
            return Give(Mine().usNomenclature, Mine().getResult, pusValue);
        }
    };

    class Link : public CATBaseUnknown
    {
    public:
        HRESULT GetLinkState(CATPrdLinkState* pState)
        {
            *pState = Mine().linkState;
            return Mine().linkResult;
        }
        HRESULT GetLinkedFileName(CATUnicodeString* pusName)
        {
            return Give(Mine().usLinkedFileName, Mine().linkResult, pusName);
        }
        HRESULT GetDocument(CATDocument** ppDocument)
        {
            *ppDocument = Mine().pDocument;
            return *ppDocument != nullptr || Mine().givesNullDocument ? S_OK : E_FAIL;
        }
        HRESULT GetShapeRepDocument(CATDocument** ppDocument) { return GetDocument(ppDocument); }
        HRESULT LoadDocument() { return S_OK; }
        HRESULT GetDesignTables(CATListValCATUnicodeString*, CATListValCATUnicodeString*) { return E_FAIL; }

    private:
        Data& Mine() const { return Products()[GetImpl()]; }
    };

    class Properties : public CATBaseUnknown
    {
    public:
        HRESULT GetNomenclature(CATUnicodeString*) { return E_FAIL; }
        HRESULT SetNomenclature(const CATUnicodeString&) { return Mine().setResult; }
        HRESULT GetDescriptionRef(CATUnicodeString*) { return E_FAIL; }
        HRESULT SetDescriptionRef(const CATUnicodeString&) { return Mine().setResult; }
        HRESULT GetDefinition(CATUnicodeString*) { return E_FAIL; }
        HRESULT SetDefinition(const CATUnicodeString&) { return Mine().setResult; }
        HRESULT GetRevision(CATUnicodeString*) { return E_FAIL; }
        HRESULT SetRevision(const CATUnicodeString&) { return Mine().setResult; }
        HRESULT GetDescriptionInst(CATUnicodeString*) { return E_FAIL; }
        HRESULT SetDescriptionInst(const CATUnicodeString&) { return E_FAIL; }
        HRESULT GetUserProperty(const CATUnicodeString&, CATUnicodeString*) { return E_FAIL; }
        HRESULT SetUserProperty(const CATUnicodeString&, const CATUnicodeString&) { return E_FAIL; }

    private:
        Data& Mine() const { return Products()[GetImpl()]; }
    };

private:
    static std::unordered_map<const CATBaseUnknown*, Data>& Products()
    {
        static std::unordered_map<const CATBaseUnknown*, Data> s_Products;
        return s_Products;
    }
    static HRESULT Give(const CATUnicodeString& usValue, HRESULT hr, CATUnicodeString* pusValue)
    {
        if (SUCCEEDED(hr)) {
            *pusValue = usValue;
        }
        return hr;
    }

    QTBTestLateType m_Type{"QTBFakeProduct", "ASMPRODUCT"};
    QTBTestLateType m_PlainType{"QTBPlainFakeProduct"};
};
