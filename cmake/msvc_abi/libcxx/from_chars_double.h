// std::from_chars for double, which libc++ 19 lacks: the C library's conversion in the "C" locale,
// for the characters that the standard's grammar allows. Included at the end of <charconv>.
#ifndef MSVC_ABI_FROM_CHARS_DOUBLE
#define MSVC_ABI_FROM_CHARS_DOUBLE

#include <cmath>
#include <locale.h>
#include <stdlib.h>
#include <string>

namespace std {

inline from_chars_result from_chars(const char* first, const char* last, double& value,
                                    chars_format = chars_format::general)
{
    const auto refuse = [&] { return from_chars_result{first, errc::invalid_argument}; };
    const char* digits = first + (first != last && *first == '-');
    if (digits == last)
        return refuse();
    // Wine's strtod does not read "nan(ind)".
    if (last - digits >= 3 && _strnicmp(digits, "nan", 3) == 0) {
        const char* end = digits + 3;
        const char* close = end;
        if (close != last && *close == '(')
            do
                ++close;
            while (close != last && (isalnum(static_cast<unsigned char>(*close)) || *close == '_'));
        if (close != last && *close == ')')
            end = close + 1;
        value = copysign(nan(""), digits == first ? 1.0 : -1.0);
        return {end, errc{}};
    }
    const bool isWord = *digits == 'i' || *digits == 'I';
    const char* end = digits;
    if (isWord)
        while (end != last && isalnum(static_cast<unsigned char>(*end)))
            ++end;
    else
        while (end != last &&
               ((*end >= '0' && *end <= '9') || *end == '.' || *end == 'e' || *end == 'E' ||
                ((*end == '-' || *end == '+') && end != digits && (end[-1] | 0x20) == 'e')))
            ++end;
    const string text(first, end);
    static const _locale_t plain = _create_locale(LC_ALL, "C");
    char* stop = nullptr;
    const double read = _strtod_l(text.c_str(), &stop, plain);
    if (stop == text.c_str())
        return refuse();
    const from_chars_result result{first + (stop - text.c_str()), errc{}};
    if ((isinf(read) && !isWord) ||
        (read == 0 && text.find_first_of("123456789") < text.find_first_of("eE")))
        return {result.ptr, errc::result_out_of_range};
    value = read;
    return result;
}

} // namespace std

#endif
