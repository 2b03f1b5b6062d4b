#include "support/KoTokenReader.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace {

bool IsBlank(int c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f'; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool AllDigits(std::string_view s)
{
    if (s.empty())
        return false;
    for (char c : s)
        if (!IsDigit(c))
            return false;
    return true;
}

}  // namespace

KoTokenReader::KoTokenReader(std::istream& in) : m_in(in) {}

KoToken KoTokenReader::Scan()
{
    int c = m_in.get();
    while (c != std::char_traits<char>::eof() && IsBlank(c)) {
        if (c == '\n')
            ++m_line;
        c = m_in.get();
    }

    KoToken token;
    token.line = m_line;
    if (c == std::char_traits<char>::eof()) {
        m_status = m_in.bad() ? eKoReaderStatus::ReadError : eKoReaderStatus::EndOfInput;
        return token;
    }

    if (c == '"') {
        token.type = eKoToken::Word;
        token.quoted = true;
        for (c = m_in.get(); c != std::char_traits<char>::eof() && c != '"'; c = m_in.get()) {
            if (c == '\n') {  // an unterminated quote ends with its line
                m_in.unget();
                break;
            }
            token.text += static_cast<char>(c);
        }
    } else {
        token.text += static_cast<char>(c);
        for (c = m_in.peek(); c != std::char_traits<char>::eof() && !IsBlank(c); c = m_in.peek())
            token.text += static_cast<char>(m_in.get());
        Classify(token);
    }
    m_status = m_in.bad() ? eKoReaderStatus::ReadError : eKoReaderStatus::Ok;
    return token;
}

void KoTokenReader::Classify(KoToken& token)
{
    token.type = eKoToken::Word;
    std::string_view s = token.text;
    const bool negative = !s.empty() && s.front() == '-';
    std::string_view unsignedPart = (!s.empty() && (s.front() == '+' || s.front() == '-')) ? s.substr(1) : s;

    if (AllDigits(unsignedPart)) {
        // from_chars takes a '-' but no '+'.
        std::string_view digits = s.front() == '+' ? s.substr(1) : s;
        long long value = 0;
        const auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (ec == std::errc() && end == digits.data() + digits.size()) {
            token.type = eKoToken::Integer;
            token.integer = value;
            token.number = static_cast<double>(value);
            return;
        }
        // Too large for 64 bits: still a number, kept as a floating one below.
    }

    // A decimal number needs a digit before any exponent; this also keeps "inf" and "nan" words.
    if (unsignedPart.empty() || !(IsDigit(unsignedPart.front()) || unsignedPart.front() == '.'))
        return;
    std::string_view body = s.front() == '+' ? s.substr(1) : s;
    double value = 0.0;
    const auto [end, ec] = std::from_chars(body.data(), body.data() + body.size(), value,
                                           std::chars_format::general);
    if (end != body.data() + body.size())
        return;
    if (ec == std::errc::result_out_of_range) {
        // Beyond the double range: a negative exponent underflows to zero, otherwise infinity.
        const auto e = unsignedPart.find_first_of("eE");
        const bool tiny = e != std::string_view::npos && e + 1 < unsignedPart.size() && unsignedPart[e + 1] == '-';
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
        if (negative)
            value = -value;
    } else if (ec != std::errc()) {
        return;
    }
    token.type = eKoToken::Float;
    token.number = value;
}

KoToken KoTokenReader::Next()
{
    if (m_hasPeeked) {
        m_hasPeeked = false;
        return std::move(m_peeked);
    }
    return Scan();
}

const KoToken& KoTokenReader::Peek()
{
    if (!m_hasPeeked) {
        m_peeked = Scan();
        m_hasPeeked = true;
    }
    return m_peeked;
}

double KoTokenReader::ReadNumber() { return Next().NumberOr0(); }

long long KoTokenReader::ReadInteger()
{
    const KoToken token = Next();
    if (token.type == eKoToken::Integer)
        return token.integer;
    if (token.type != eKoToken::Float || std::isnan(token.number))
        return 0;
    constexpr double kLimit = 9223372036854775807.0;  // rounds to 2^63
    if (token.number >= kLimit)
        return std::numeric_limits<long long>::max();
    if (token.number <= -kLimit)
        return std::numeric_limits<long long>::min();
    return static_cast<long long>(token.number);
}

std::string KoTokenReader::ReadText() { return Next().text; }

bool KoTokenReader::Skip() { return Next().type != eKoToken::End; }
