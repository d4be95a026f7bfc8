#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "CATDataType.h"
#include "CATIDOMDocument.h"
#include "CATListValCATUnicodeString.h"
#include "QTBPdmStoreExport.h"
#include "QTBStoreExpansion.h"
#include "QTBStoreImportReport.h"
#include "QTBStoreQuery.h"

class QTBStoreDatabase;

// A PDM system in a file: parts, documents, files and the relations between them, with versions, states and check-outs
// (docs/store.md). It knows the classes of the schema in force, which must be loaded.
//
// Each request is one transaction. What it answers has the form of docs/formats.md and goes to the receiver, which may
// be empty, piece by piece; it is an answer only when the request succeeds. A request that fails carries a message for
// the user and changed nothing, and the store can be used on. Several processes may use one store: readers never wait,
// writers wait for each other.
//
// Paths are the system's, whatever bytes they have.
class QTBPDMSTORE_API QTBPdmStore
{
public:
    using Receiver = std::function<void(std::string_view)>;
    using Keys = std::vector<CATUnicodeString>;

    struct Options
    {
        // In whose name requests are made; must not be empty.
        CATUnicodeString user;
        bool isReadOnly = false;
        // How long a request waits for another process.
        int busyTimeoutInMs = 5000;
        // What the store's file may grow to, 0 for any size.
        std::int64_t maxBytes = 0;
    };

    // Makes an empty store. Fails when there is a file of that name.
    static HRESULT Create(const std::string& path);

    // Opens a store; one of an older version is brought up to date. Fails for a file that is missing, is no store, is
    // damaged or of a newer version.
    static HRESULT Open(const std::string& path, const Options& options, std::unique_ptr<QTBPdmStore>* ppStore);

    QTBPdmStore(const QTBPdmStore&) = delete;
    QTBPdmStore& operator=(const QTBPdmStore&) = delete;
    ~QTBPdmStore();

    const CATUnicodeString& GetUser() const { return m_Options.user; }

    // Whether a path, which need not exist, leads to a file of the store or into its folder of files.
    bool IsOwnFile(const std::string& path) const;

    // Lets answers know which items the session holds: a version then takes the place of the one that the session has,
    // even if it missed those in between.
    void SetSessionKeys(const std::function<bool(const CATUnicodeString&)>& isHeld) { m_IsHeld = isHeld; }

    // Requests that read.

    // The items of those keys. Fails when there is none for one of them.
    HRESULT GetItems(const Keys& keys, const Receiver& receiver);
    // Objects by class and attributes. Fails for an unknown class.
    HRESULT Query(const QTBStoreQuery& query, const Receiver& receiver);
    // Objects and what relations lead to from them; each item once.
    HRESULT Expand(const QTBStoreExpansion& expansion, const Receiver& receiver);
    // Everything: an answer that another store can import.
    HRESULT Export(bool newestVersionsOnly, const Receiver& receiver);
    // A function of the store, which answers as "dynamicInvoke": getVersions (argument key), getCheckedOut (argument
    // user, by default the own), getRoots (argument class).
    using Arguments = std::vector<std::pair<CATUnicodeString, CATUnicodeString>>;
    HRESULT Invoke(const CATUnicodeString& usFunction, const Arguments& arguments, const Receiver& receiver);
    // Writes the file of an object. Fails for an object without one, and for a path that leads into the store itself.
    HRESULT FetchFile(const CATUnicodeString& usKey, const std::string& path);
    // Whether a file has the content of the object's; FALSE when there is none of that name. Fails for an object
    // without a file and for a path that cannot be read.
    HRESULT CompareFile(const CATUnicodeString& usKey, const std::string& path, unsigned char* pbIsSame);

    // Requests that change. They fail when the user may not do it (docs/store.md says who may do what).

    HRESULT CheckOut(const Keys& keys, const Receiver& receiver);
    // paths: the files that the objects have from now on, parallel to the keys; missing or empty for no change.
    HRESULT CheckIn(const Keys& keys, const std::vector<std::string>& paths, const Receiver& receiver);
    // Into the next state.
    HRESULT Promote(const Keys& keys, const Receiver& receiver);
    // A new version of each object, which takes its place.
    HRESULT Revise(const Keys& keys, const Receiver& receiver);
    // usXml: "a" elements for an object or a relation.
    HRESULT UpdateAttributes(const CATUnicodeString& usKey, const CATUnicodeString& usXml, const Receiver& receiver);
    // usKey may be empty; the store makes a key then.
    HRESULT CreateObject(const CATUnicodeString& usClass, const CATUnicodeString& usKey, const CATUnicodeString& usXml,
                         const Receiver& receiver);
    HRESULT CreateRelation(const CATUnicodeString& usClass, const CATUnicodeString& usLeftKey,
                           const CATUnicodeString& usRightKey, const CATUnicodeString& usXml, const Receiver& receiver);
    // usOption: empty, or "AllVersions" for objects with all their versions.
    HRESULT Delete(const Keys& keys, const CATUnicodeString& usOption, const Receiver& receiver);
    // Takes an answer in. With a folder the files of file objects that lie in it are taken in too.
    HRESULT Import(const CATIDOMDocument_var& spAnswer, const std::string& fileFolder, QTBStoreImportReport* pReport);

    // Goes through the whole store and lists what is wrong with it, which is nothing unless the disk or somebody else
    // wrote to it. Files that a crash left behind are removed on the way.
    HRESULT Check(CATListValCATUnicodeString* pFaults);

private:
    QTBPdmStore(const std::string& path, const Options& options);

    template <class Request>
    HRESULT ReadFile(const CATUnicodeString& usKey, Request request);
    template <class Request>
    HRESULT Read(const char* function, const Receiver& receiver, Request request);
    template <class Request>
    HRESULT Change(const char* function, const Receiver& receiver, Request request);
    // A change that may keep and release files; those that nobody refers to after it are removed.
    template <class Operation>
    HRESULT ChangeFiles(Operation operation);

    Options m_Options;
    std::unique_ptr<QTBStoreDatabase> m_pDatabase;
    std::function<bool(const CATUnicodeString&)> m_IsHeld;
};
