#include "QTBExchangedFiles.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>
#include <unordered_map>
#include <utility>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "CATError.h"

namespace {

struct FileState
{
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    std::pair<std::uint64_t, std::uint64_t> content;
};

std::unordered_map<std::string, FileState>& Files()
{
    static std::unordered_map<std::string, FileState> s_Files;
    return s_Files;
}

// One file may be named in several ways.
std::string GetKey(const std::filesystem::path& path)
{
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(path, error);
    return error ? path.string() : canonical.string();
}

HRESULT ReportUnreadable(const std::filesystem::path& path, const std::error_code& reason)
{
    auto* pError =
        CATError::Make<CATInternalError>({CATUnicodeString(path.string()), CATUnicodeString(reason.message())},
                                         "FileNotReadableERR_1003", "QTBBaseLibErrors");
    return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
}

// Size and time of a file. *pExists is false for a file that is not there; anything but a file cannot be read.
HRESULT ReadState(const std::filesystem::path& path, FileState* pState, bool* pExists)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    *pExists = std::filesystem::exists(status);
    if (status.type() == std::filesystem::file_type::not_found) {
        return S_OK;
    }
    if (!error && !std::filesystem::is_regular_file(status)) {
        error = std::make_error_code(std::filesystem::is_directory(status) ? std::errc::is_a_directory
                                                                           : std::errc::not_supported);
    }
    if (!error) {
        pState->size = std::filesystem::file_size(path, error);
    }
    if (!error) {
        pState->time = std::filesystem::last_write_time(path, error);
    }
    return error ? ReportUnreadable(path, error) : S_OK;
}

HRESULT ReadContent(const std::filesystem::path& path, FileState* pState)
{
    struct FreeHash
    {
        void operator()(XXH3_state_t* pHash) const { XXH3_freeState(pHash); }
    };
    const std::unique_ptr<XXH3_state_t, FreeHash> pHash(XXH3_createState());
    std::ifstream file(path, std::ios::binary);
    if (!pHash || !file) {
        return ReportUnreadable(path, std::make_error_code(std::errc::permission_denied));
    }
    XXH3_128bits_reset(pHash.get());
    const auto pBuffer = std::make_unique<std::array<char, 1U << 16U>>();
    while (file.read(pBuffer->data(), static_cast<std::streamsize>(pBuffer->size())) || file.gcount() > 0) {
        XXH3_128bits_update(pHash.get(), pBuffer->data(), static_cast<std::size_t>(file.gcount()));
    }
    if (file.bad()) {
        return ReportUnreadable(path, std::make_error_code(std::errc::io_error));
    }
    const XXH128_hash_t hash = XXH3_128bits_digest(pHash.get());
    pState->content = {hash.high64, hash.low64};
    return S_OK;
}

} // namespace

HRESULT QTBExchangedFiles::Note(const CATUnicodeString& usPath)
{
    const std::filesystem::path path(usPath.View());
    FileState state;
    bool exists = false;
    HRESULT hr = ReadState(path, &state, &exists);
    if (FAILED(hr)) {
        return hr;
    }
    if (!exists) {
        return ReportUnreadable(path, std::make_error_code(std::errc::no_such_file_or_directory));
    }
    hr = ReadContent(path, &state);
    if (SUCCEEDED(hr)) {
        Files()[GetKey(path)] = state;
    }
    return hr;
}

HRESULT QTBExchangedFiles::GetState(const CATUnicodeString& usPath, bool compareContent, State* pState)
{
    const std::filesystem::path path(usPath.View());
    FileState state;
    bool exists = false;
    if (const HRESULT hr = ReadState(path, &state, &exists); FAILED(hr)) {
        return hr;
    }
    if (!exists) {
        *pState = State::Absent;
        return S_OK;
    }
    const auto noted = Files().find(GetKey(path));
    if (noted == Files().end()) {
        *pState = State::NotNoted;
        return S_OK;
    }
    bool isChanged = state.size != noted->second.size || state.time != noted->second.time;
    if (isChanged && compareContent && state.size == noted->second.size) {
        if (const HRESULT hr = ReadContent(path, &state); FAILED(hr)) {
            return hr;
        }
        isChanged = state.content != noted->second.content;
    }
    *pState = isChanged ? State::Changed : State::Unchanged;
    return S_OK;
}

void QTBExchangedFiles::Forget()
{
    Files().clear();
}
