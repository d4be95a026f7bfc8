#include "QTBPdmStore.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <new>
#include <string>
#include <system_error>

#include "QTBStoreChanging.h"
#include "QTBStoreCheck.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"
#include "QTBStoreFiles.h"
#include "QTBStoreImport.h"
#include "QTBStoreMigrations.h"
#include "QTBStoreReading.h"

namespace fs = std::filesystem;

namespace {

// The border of the store: what is raised inside becomes a result.
template <class Operation>
HRESULT Guard(Operation operation)
{
    try {
        operation();
        return S_OK;
    } catch (const QTBStoreFailure& failure) {
        return failure.ToResult();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

// What the database keeps beside its file, itself first.
constexpr const char* DATABASE_ENDS[] = {"", "-wal", "-shm", "-journal"};

// The files of a store in the making; they vanish unless it is completed.
class NewStore
{
public:
    explicit NewStore(const std::string& path) : m_Path(path), m_Interim(path + ".new-" + std::to_string(getpid())) {}
    NewStore(const NewStore&) = delete;
    NewStore& operator=(const NewStore&) = delete;
    ~NewStore()
    {
        for (const char* end : DATABASE_ENDS) {
            std::error_code error;
            fs::remove(m_Interim + end, error);
        }
    }

    const std::string& GetInterimPath() const { return m_Interim; }

    // Gives the store its name, unless another file has it.
    void Complete() const
    {
        if (renameat2(AT_FDCWD, m_Interim.c_str(), AT_FDCWD, m_Path.c_str(), RENAME_NOREPLACE) == 0) {
            return;
        }
        // Not every file system can do that in one step.
        std::error_code error;
        if (errno == EINVAL && !fs::exists(m_Path, error) && std::rename(m_Interim.c_str(), m_Path.c_str()) == 0) {
            return;
        }
        const int reason = errno;
        const CATUnicodeString usPath(std::string_view{m_Path});
        if (reason == EEXIST || fs::exists(m_Path, error)) {
            throw QTBStoreFailure("StoreExistsERR_1002", usPath);
        }
        throw QTBStoreFailure("StoreUnusableERR_1009", usPath, CATUnicodeString(std::strerror(reason)));
    }

private:
    std::string m_Path;
    std::string m_Interim;
};

} // namespace

HRESULT QTBPdmStore::Create(const std::string& path)
{
    return Guard([&path] {
        std::error_code error;
        if (fs::exists(path, error)) {
            throw QTBStoreFailure("StoreExistsERR_1002", path);
        }
        const NewStore newStore(path);
        {
            QTBStoreDatabase::Options options;
            options.mayCreate = true;
            QTBStoreDatabase database(newStore.GetInterimPath(), options);
            QTBStoreMigrations::Create(database);
        }
        newStore.Complete();
    });
}

HRESULT QTBPdmStore::Open(const std::string& path, const Options& options, std::unique_ptr<QTBPdmStore>* ppStore)
{
    if (ppStore == nullptr) {
        return E_POINTER;
    }
    return Guard([&path, &options, ppStore] { ppStore->reset(new QTBPdmStore(path, options)); });
}

QTBPdmStore::QTBPdmStore(const std::string& path, const Options& options) : m_Options(options)
{
    if (options.user.IsEmpty()) {
        throw QTBStoreFailure("UserMissingERR_1012");
    }
    std::error_code error;
    if (!fs::exists(path, error)) {
        throw QTBStoreFailure("StoreNotFoundERR_1001", path);
    }
    if (!fs::is_regular_file(path, error)) {
        throw QTBStoreFailure("NoStoreERR_1003", path);
    }
    m_pDatabase = std::make_unique<QTBStoreDatabase>(
        path, QTBStoreDatabase::Options{options.isReadOnly, options.busyTimeoutInMs, options.maxBytes, false});
    QTBStoreMigrations::Update(*m_pDatabase);
}

QTBPdmStore::~QTBPdmStore() = default;

bool QTBPdmStore::IsOwnFile(const std::string& path) const
{
    const auto resolve = [](const std::string& name) {
        std::error_code error;
        return fs::weakly_canonical(fs::absolute(name, error), error);
    };
    const fs::path target = resolve(path);
    const std::string& store = m_pDatabase->GetPath();
    const bool isDatabase = std::any_of(std::begin(DATABASE_ENDS), std::end(DATABASE_ENDS), [&](const char* end) {
        std::error_code error;
        return target == resolve(store + end) || fs::equivalent(target, store + end, error);
    });
    const fs::path folder = resolve(QTBStoreFiles::GetFolder(store));
    return !path.empty() &&
           (isDatabase ||
            std::mismatch(folder.begin(), folder.end(), target.begin(), target.end()).first == folder.end());
}

template <class Request>
HRESULT QTBPdmStore::Read(const char* function, const Receiver& receiver, Request request)
{
    return Guard([&] {
        QTBStoreReading reading(*m_pDatabase, {m_Options.user, m_IsHeld, receiver}, function);
        request(reading);
    });
}

template <class Operation>
HRESULT QTBPdmStore::ChangeFiles(Operation operation)
{
    QTBStoreFileChanges changes;
    const HRESULT hr = Guard([&] { operation(&changes); });
    try {
        QTBStoreFiles files(*m_pDatabase);
        if (SUCCEEDED(hr)) {
            files.RemoveUnused(changes.released);
        } else {
            files.RemoveUnnamed(changes.kept);
        }
    } catch (const std::exception&) {
        // The change is done or refused; files that stay because this fails are found by the next check.
    }
    return hr;
}

template <class Request>
HRESULT QTBPdmStore::Change(const char* function, const Receiver& receiver, Request request)
{
    return ChangeFiles([&](QTBStoreFileChanges* pFiles) {
        QTBStoreChanging changing(*m_pDatabase, {m_Options.user, m_IsHeld, receiver}, function, pFiles);
        request(changing);
    });
}

HRESULT QTBPdmStore::GetItems(const Keys& keys, const Receiver& receiver)
{
    return Read("get", receiver, [&keys](QTBStoreReading& reading) { reading.GetItems(keys); });
}

HRESULT QTBPdmStore::Query(const QTBStoreQuery& query, const Receiver& receiver)
{
    return Read("query", receiver, [&query](QTBStoreReading& reading) { reading.Query(query); });
}

HRESULT QTBPdmStore::Expand(const QTBStoreExpansion& expansion, const Receiver& receiver)
{
    return Read("expand", receiver, [&expansion](QTBStoreReading& reading) { reading.Expand(expansion); });
}

HRESULT QTBPdmStore::Export(bool newestVersionsOnly, const Receiver& receiver)
{
    return Read("export", receiver,
                [newestVersionsOnly](QTBStoreReading& reading) { reading.Export(newestVersionsOnly); });
}

HRESULT QTBPdmStore::Invoke(const CATUnicodeString& usFunction, const Arguments& arguments, const Receiver& receiver)
{
    return Read("dynamicInvoke", receiver, [&](QTBStoreReading& reading) { reading.Invoke(usFunction, arguments); });
}

template <class Request>
HRESULT QTBPdmStore::ReadFile(const CATUnicodeString& usKey, Request request)
{
    return Guard([&] {
        QTBStoreTransaction transaction(*m_pDatabase, QTBStoreTransaction::Kind::Read);
        const QTBStoreObject object = QTBStoreItems(*m_pDatabase).GetObject(usKey);
        if (object.fileId == 0) {
            throw QTBStoreFailure("ObjectWithoutFileERR_1123", usKey);
        }
        QTBStoreFiles files(*m_pDatabase);
        request(files, object.fileId);
        transaction.Commit();
    });
}

HRESULT QTBPdmStore::FetchFile(const CATUnicodeString& usKey, const std::string& path)
{
    return ReadFile(usKey, [&](QTBStoreFiles& files, std::int64_t fileId) {
        if (IsOwnFile(path)) {
            throw QTBStoreFailure("FileIsStoresERR_1125", path);
        }
        files.Fetch(fileId, path);
    });
}

HRESULT QTBPdmStore::CompareFile(const CATUnicodeString& usKey, const std::string& path, unsigned char* pbIsSame)
{
    if (pbIsSame == nullptr) {
        return E_POINTER;
    }
    return ReadFile(usKey, [&](QTBStoreFiles& files, std::int64_t fileId) {
        *pbIsSame = files.IsSame(fileId, path) ? TRUE : FALSE;
    });
}

HRESULT QTBPdmStore::CheckOut(const Keys& keys, const Receiver& receiver)
{
    return Change("checkOut", receiver, [&keys](QTBStoreChanging& changing) { changing.CheckOut(keys); });
}

HRESULT QTBPdmStore::CheckIn(const Keys& keys, const std::vector<std::string>& paths, const Receiver& receiver)
{
    QTBStoreChanging::FileCopies copies;
    const HRESULT hr = Guard([&] {
        m_pDatabase->RequireWritable();
        const QTBStoreFiles files(*m_pDatabase);
        for (const std::string& path : paths) {
            copies.push_back(path.empty() ? nullptr : files.Take(path));
        }
    });
    if (FAILED(hr)) {
        return hr;
    }
    return Change("checkIn", receiver, [&](QTBStoreChanging& changing) { changing.CheckIn(keys, copies); });
}

HRESULT QTBPdmStore::Promote(const Keys& keys, const Receiver& receiver)
{
    return Change("promote", receiver, [&keys](QTBStoreChanging& changing) { changing.Promote(keys); });
}

HRESULT QTBPdmStore::Revise(const Keys& keys, const Receiver& receiver)
{
    return Change("revise", receiver, [&keys](QTBStoreChanging& changing) { changing.Revise(keys); });
}

HRESULT QTBPdmStore::UpdateAttributes(const CATUnicodeString& usKey, const CATUnicodeString& usXml,
                                      const Receiver& receiver)
{
    return Change("updateAttributes", receiver,
                  [&](QTBStoreChanging& changing) { changing.UpdateAttributes(usKey, usXml); });
}

HRESULT QTBPdmStore::CreateObject(const CATUnicodeString& usClass, const CATUnicodeString& usKey,
                                  const CATUnicodeString& usXml, const Receiver& receiver)
{
    return Change("createObject", receiver,
                  [&](QTBStoreChanging& changing) { changing.CreateObject(usClass, usKey, usXml); });
}

HRESULT QTBPdmStore::CreateRelation(const CATUnicodeString& usClass, const CATUnicodeString& usLeftKey,
                                    const CATUnicodeString& usRightKey, const CATUnicodeString& usXml,
                                    const Receiver& receiver)
{
    return Change("createRelation", receiver,
                  [&](QTBStoreChanging& changing) { changing.CreateRelation(usClass, usLeftKey, usRightKey, usXml); });
}

HRESULT QTBPdmStore::Delete(const Keys& keys, const CATUnicodeString& usOption, const Receiver& receiver)
{
    return Change("delete", receiver, [&](QTBStoreChanging& changing) { changing.Delete(keys, usOption); });
}

HRESULT QTBPdmStore::Import(const CATIDOMDocument_var& spAnswer, const std::string& fileFolder,
                            QTBStoreImportReport* pReport)
{
    CATIDOMElement_var spRoot;
    if (spAnswer == NULL_var || FAILED(spAnswer->GetDocumentElement(&spRoot)) || spRoot == NULL_var) {
        return E_FAIL;
    }
    return ChangeFiles([&](QTBStoreFileChanges* pFiles) {
        QTBStoreImport import(*m_pDatabase, {m_Options.user, m_IsHeld, {}}, fileFolder, pFiles);
        const QTBStoreImportReport report = import.Run(spRoot->GetView());
        if (pReport != nullptr) {
            *pReport = report;
        }
    });
}

HRESULT QTBPdmStore::Check(CATListValCATUnicodeString* pFaults)
{
    if (pFaults == nullptr) {
        return E_POINTER;
    }
    return Guard([&] { *pFaults = QTBStoreCheck(*m_pDatabase).Run(); });
}
