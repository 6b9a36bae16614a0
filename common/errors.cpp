#include "common/errors.h"

#include "common/sys/last_error.h"
#include "common/sys/text_encoding.h"
#include "common/system_error.h"

gtl::status LmwError::Undefined() {
    return gtl::status(24181);
}

gtl::status LmwError::compound(const gtl::status& main, std::span<const gtl::status> parts) {
    std::wstring list;
    std::size_t number = 0;
    for (const gtl::status& part : parts) {
        list += L"\r\n  " + std::to_wstring(++number) + L". " + part.as_wstring();
    }
    return gtl::status(20471, main.as_wstring(), std::move(list));
}

gtl::status LmwError::dll_load(const std::wstring& library, const std::wstring& reason) {
    return gtl::status(20503, library, reason);
}

gtl::status LmwError::err_sysserv(const std::wstring& service, const std::wstring& code) {
    return gtl::status(20755, service, code);
}

gtl::status LmwError::err_sysserv(const std::wstring& service, const std::wstring& code,
                                  const std::wstring& detail) {
    return gtl::status(20755, service, code, detail);
}

gtl::status LmwError::internal(const char* text, const char* file, unsigned line) {
    const unsigned system_code = sys::LastError();  // first of all: an allocation may change it
    const std::string place = file != nullptr ? file : "";
    std::wstring system_text =
        system_code != 0 ? lmw::diag::impl::SysCodeAsString_(system_code) : std::wstring();
    gtl::status result(20571, sys::Widen(text != nullptr ? text : ""), std::move(system_text));
    result.AttachSource(place, static_cast<int>(line));
    return result;
}

gtl::status LmwError::join(const gtl::status& first, const gtl::status& second) {
    return gtl::status::FromText(first.as_wstring() + L"\n\n" + second.as_wstring());
}

gtl::status LmwError::mngsrv() {
    return gtl::status(20706);
}

gtl::status LmwError::syntax(const std::string& text) {
    return syntax(sys::Widen(text));
}

gtl::status LmwError::syntax(const std::wstring& text) {
    return gtl::status(20754, text);
}

gtl::status LmwError::unexpected_exception(const std::string& text) {
    return unexpected_exception(sys::Widen(text));
}

gtl::status LmwError::unexpected_exception(const std::wstring& text) {
    return gtl::status(20654, text);
}

gtl::status LmwError::File::copy(const std::wstring& source, const std::wstring& destination,
                                 const std::wstring& reason) {
    return gtl::status(20516, source, destination, reason);
}

gtl::status LmwError::File::create_dir(const std::wstring& path, const std::wstring& reason) {
    return gtl::status(20517, path, reason);
}

gtl::status LmwError::File::del(const std::wstring& path, const std::wstring& reason) {
    return gtl::status(20518, path, reason);
}

gtl::status LmwError::File::file_not_found(const std::wstring& path) {
    return gtl::status(20524, path);
}

gtl::status LmwError::File::file_path_too_long(const std::wstring& path, std::uint64_t max_length) {
    return gtl::status(20527, path, std::to_wstring(max_length));
}

gtl::status LmwError::File::find(const std::wstring& path, const std::wstring& reason) {
    return gtl::status(20519, path, reason);
}

gtl::status LmwError::File::get_temp_path(const std::wstring& reason) {
    return gtl::status(20520, reason);
}

gtl::status LmwError::File::invalid_path(const std::wstring& path) {
    return gtl::status(20521, path);
}

gtl::status LmwError::File::open(const std::wstring& path, const std::wstring& reason) {
    return gtl::status(20526, path, reason);
}

gtl::status LmwError::File::read(const std::wstring& path, const std::wstring& reason) {
    return gtl::status(20536, path, reason);
}

gtl::status LmwError::File::rename(const std::wstring& old_path, const std::wstring& new_path,
                                   const std::wstring& reason) {
    return gtl::status(20538, old_path, new_path, reason);
}

gtl::status LmwError::File::save_over_readonly(const std::wstring& path) {
    return gtl::status(20539, path);
}

gtl::status LmwError::File::set_attrib(const std::wstring& path, const std::wstring& reason) {
    return gtl::status(20540, path, reason);
}

gtl::status LmwError::File::shell_missing_association(const std::wstring& path,
                                                      const std::wstring& reason) {
    return gtl::status(20514, path, reason);
}

gtl::status LmwError::File::unknown_file_type(const std::wstring& path) {
    return gtl::status(20758, path);
}

gtl::status LmwError::File::write(const std::wstring& path, const std::wstring& reason) {
    return gtl::status(20541, path, reason);
}
