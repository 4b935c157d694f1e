#pragma once

#include <vrn/qt/i_validator.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace vrn::qt {

/// Free text with a length limit, an optional pattern and optional
/// upper-casing. The value is a `std::wstring`, or a `std::string` in UTF-8.
///
/// A text over the limit is cut, not refused; the limit counts `wchar_t`.
/// Upper-casing comes before the match, and the pattern matches the whole text,
/// up to its first zero character. Empty text is an empty string, not a missing
/// value. The flags are ignored. A refusal leaves the value untouched.
struct VRN_QT2_EXPORT StringEditValidator : public IValidator
{
    enum StorageType : std::uint32_t
    {
        StorageTypeUtf8String = 0, ///< The value is a `std::string` in UTF-8.
        StorageTypeWideString = 1, ///< The value is a `std::wstring`.
    };

    /// Asserts "m_maxLen > 0".
    explicit StringEditValidator(std::size_t maxLen);
    ~StringEditValidator() override;

    /// A Perl-style expression; empty for none. One that does not compile makes
    /// `validate` throw boost::regex_error. A match that is given up for its
    /// complexity counts as a refusal.
    void setAllowedRegex(const std::wstring& pattern);
    /// Texts are upper-cased by the rules of the global std::locale, both when they
    /// are read and when they are written.
    void setUpperCase(bool upperCase);
    /// With any other type, `validate` stores nothing.
    void setStorageType(StorageType type);

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    /// Takes either string type, whatever the storage type. Neither the limit nor
    /// the pattern is applied here. The text ends at the first zero character.
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;

private:
    class Pattern;

    std::size_t m_maxLen;
    bool m_upperCase = false;
    std::wstring m_allowedRegex;
    std::unique_ptr<Pattern> m_pattern; ///< Compiled at the first validation that needs it.
    StorageType m_storageType = StorageTypeWideString;
};

} // namespace vrn::qt
