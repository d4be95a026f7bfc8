#pragma once

#include <map>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "CATListValCATUnicodeString.h"
#include "QTBCatiaNodeBehaviorDefinitions.h"
#include "QTBConstants.h"
#include "QTBSchemaAttribute.h"
#include "QTBSchemaDataSource.h"
#include "QTBSchemaObject.h"
#include "QTBSchemaRelation.h"

// The PDM classes and settings of a schema file (docs/formats.md). Owns everything in it. Look-ups by name take
// constant time.
class QTBBASELIB_API QTBSchema
{
public:
    QTBSchema(const QTBSchema&) = delete;
    QTBSchema& operator=(const QTBSchema&) = delete;
    ~QTBSchema();

    // The class of objects or relations of that name. E_FAIL, quietly, when the schema knows none.
    HRESULT GetObjectPtr(const CATUnicodeString& usClassName, QTBSchemaObject** ppSchemaObject) const;
    HRESULT GetRelationPtr(const CATUnicodeString& usClassName, QTBSchemaRelation** ppSchemaRelation) const;

    // All of them in the order of the file, counted from 1; E_FAIL outside the list.
    int GetObjectCount() const { return static_cast<int>(m_Objects.size()); }
    HRESULT GetObjectPtr(int index, QTBSchemaObject** ppSchemaObject) const;
    int GetRelationCount() const { return static_cast<int>(m_Relations.size()); }
    HRESULT GetRelationPtr(int index, QTBSchemaRelation** ppSchemaRelation) const;

    // The class of that name, whether of objects or of relations; null when the schema knows none.
    QTBSchemaNode* FindClass(const CATUnicodeString& usClassName) const;
    const QTBSchemaObject* FindObject(const CATUnicodeString& usClassName) const;

    // Names of the attributes that mean something to the session; the names of class and key are never empty.
    const CATUnicodeString& GetClassAttr() const { return m_AttrNames.classAttr; }
    const CATUnicodeString& GetKeyAttr() const { return m_AttrNames.keyAttr; }
    const CATUnicodeString& GetRelationAttr() const { return m_AttrNames.relationAttr; }
    const CATUnicodeString& GetLeftRelationshipAttr() const { return m_AttrNames.leftAttr; }
    const CATUnicodeString& GetRightRelationshipAttr() const { return m_AttrNames.rightAttr; }
    const CATUnicodeString& GetLeftRelationClassAttr() const { return m_AttrNames.leftClassAttr; }
    const CATUnicodeString& GetRightRelationClassAttr() const { return m_AttrNames.rightClassAttr; }

    // Maximum expansion level of rep trees, -1 for unlimited.
    HRESULT GetMaxExpansionLevel(int* pMaxExpansionLevel) const;
    // Maximum number of characters of a description value; 0 or less for unlimited.
    int GetMaxDescAttrLength() const { return m_iMaxDescAttrLength; }
    unsigned char ShowDataSourceNlsValues() const { return m_bShowDataSourceNlsValues; }
    unsigned char UseBomPartStructure() const { return m_bUseBomPartStructure; }

    // The PDM system that the schema is made for, also as text, and the name of its customization.
    QTBPdmSystem GetSystem() const { return m_System; }
    const CATUnicodeString& GetSystemText() const { return m_usSystem; }
    const CATUnicodeString& GetCustomization() const { return m_usCustomization; }
    // The message catalog of the display names.
    const CATUnicodeString& GetCatalogName() const { return m_usCatalogName; }

    // Null when the schema has none of that name.
    QTBSchemaAttribute* FindAttribute(const CATUnicodeString& usName) const;
    QTBSchemaDataSource* FindDataSource(const CATUnicodeString& usName) const;
    // Null when the schema configures no behaviours.
    QTBCatiaNodeBehaviorDefinitions* GetCatiaNodeBehaviorDefinitionsPtr() const { return m_pBehaviors.get(); }

    // The settings of the session and their XML attributes in a schema file.
    struct SessionSetting
    {
        const char* attribute;
        QTBPdmSessionStringAttr key;
    };
    static constexpr const char* PART_CLASS = "partClass";
    static constexpr SessionSetting SESSION_SETTINGS[] = {{"partNumberAttr", QTB_PDM_SESSION_PART_NUMBER_ATTR},
                                                          {"instanceNameAttr", QTB_PDM_SESSION_INSTANCE_NAME_ATTR},
                                                          {"fileNameAttr", QTB_PDM_SESSION_FILE_NAME_ATTR},
                                                          {PART_CLASS, QTB_PDM_SESSION_PART_CLASS}};

    // A setting of the session, empty when the schema does not define it.
    const CATUnicodeString& GetSessionValue(QTBPdmSessionStringAttr attr) const;

    // Names of all part classes, of those that can have sub-parts, and of those that a single part's document can be
    // stored as; in the order of the file.
    const CATListValCATUnicodeString& GetPartClassNames() const { return m_PartClassNames; }
    const CATListValCATUnicodeString& GetPartClassNamesWithSubParts() const { return m_PartClassNamesWithSubParts; }
    const CATListValCATUnicodeString& GetCatPartClassNames() const { return m_CatPartClassNames; }

    // How CAD files of one kind are stored when they stand in the BOM part structure (QTB_BOM_TYPE_PART) or beside it
    // (QTB_BOM_TYPE_AUX_FILE).
    struct CatiaFileClassInfo
    {
        CATListValCATUnicodeString pdmClasses; // the first is the one of new objects
        unsigned char bIsBomPart = FALSE;      // such a document stands for a part of the BOM part structure
    };
    // Null when the schema does not say so for the BOM type.
    CatiaFileClassInfo* FindCatiaFileClassInfo(QTBCatiaFileClass fileClass, QTBBomType bomType);

private:
    friend class QTBSchemaReader;

    QTBSchema();

    struct AttrNames
    {
        CATUnicodeString classAttr;
        CATUnicodeString keyAttr;
        CATUnicodeString relationAttr;
        CATUnicodeString leftAttr;
        CATUnicodeString rightAttr;
        CATUnicodeString leftClassAttr;
        CATUnicodeString rightClassAttr;
    };

    template <class Element>
    using Index = std::unordered_map<CATUnicodeString, Element*>;

    AttrNames m_AttrNames;
    int m_iMaxExpansionLevel = -1;
    int m_iMaxDescAttrLength = -1;
    unsigned char m_bShowDataSourceNlsValues = FALSE;
    unsigned char m_bUseBomPartStructure = FALSE;
    QTBPdmSystem m_System = QTB_PDMSYSTEM_UNKNOWN;
    CATUnicodeString m_usSystem;
    CATUnicodeString m_usCustomization;
    CATUnicodeString m_usCatalogName;
    std::map<QTBPdmSessionStringAttr, CATUnicodeString> m_SessionValues;

    std::vector<std::unique_ptr<QTBSchemaObject>> m_Objects;
    std::vector<std::unique_ptr<QTBSchemaRelation>> m_Relations;
    std::vector<std::unique_ptr<QTBSchemaAttribute>> m_Attributes;
    std::vector<std::unique_ptr<QTBSchemaDataSource>> m_DataSources;
    std::unique_ptr<QTBCatiaNodeBehaviorDefinitions> m_pBehaviors;
    Index<QTBSchemaObject> m_ObjectIndex;
    Index<QTBSchemaRelation> m_RelationIndex;
    Index<QTBSchemaAttribute> m_AttributeIndex;
    Index<QTBSchemaDataSource> m_DataSourceIndex;

    CATListValCATUnicodeString m_PartClassNames;
    CATListValCATUnicodeString m_PartClassNamesWithSubParts;
    CATListValCATUnicodeString m_CatPartClassNames;
    std::map<std::pair<QTBCatiaFileClass, QTBBomType>, CatiaFileClassInfo> m_CatiaFileClassInfos;
};
