#pragma once
// Reads a text stream as a sequence of tokens, in file order:
//   Integer  an optional sign and decimal digits only ("12", "-3", "+7"), within 64 bits;
//   Float    any other complete decimal number ("1.5", "-2e3", ".5", "1e400" gives inf);
//   Word     every other run of non-blank characters, or a text in double quotes, which may hold
//            blanks and may be empty (the quotes are not part of the text; it ends at the closing
//            quote or, unterminated, at the end of the line);
//   End      no more input (repeats once reached).
// Blanks are spaces, tabs, CR and LF. Each token carries the line it started on (first line 1).
//
// Parameter readers usually want "a number, any other token counts as 0.0":
//   KoTokenReader reader(stream);
//   const long long count = reader.ReadInteger();
//   for (long long i = 0; i < count; ++i) p[i] = reader.ReadNumber();

#include <cstdint>
#include <istream>
#include <string>

enum class eKoToken { Integer, Float, Word, End };

enum class eKoReaderStatus {
    Ok,          // the last token was read normally
    EndOfInput,  // the input is exhausted
    ReadError,   // the stream failed while reading (not merely at its end)
};

struct KoToken {
    eKoToken type = eKoToken::End;
    std::string text;        // the token as it stands (without quotes for a quoted word)
    long long integer = 0;   // Integer tokens
    double number = 0.0;     // Integer and Float tokens
    int line = 0;
    bool quoted = false;

    bool IsNumber() const { return type == eKoToken::Integer || type == eKoToken::Float; }
    // The numeric value of an Integer or Float token, 0.0 for any other token.
    double NumberOr0() const { return IsNumber() ? number : 0.0; }
};

class KoTokenReader {
public:
    // The stream must outlive the reader.
    explicit KoTokenReader(std::istream& in);

    KoToken Next();
    // The next token without consuming it.
    const KoToken& Peek();

    // Convenience: the next token's number (Integer or Float), 0.0 for any other token.
    double ReadNumber();
    // The next token as an integer: an Integer token's value, a Float truncated toward zero
    // (clamped to the 64-bit range), 0 for any other token.
    long long ReadInteger();
    // The next token's text ("" at the end).
    std::string ReadText();
    // Consumes one token; false when the input was already exhausted.
    bool Skip();

    eKoReaderStatus Status() const { return m_status; }
    bool AtEnd() { return Peek().type == eKoToken::End; }
    // The line the reader stands on: where the next token starts once peeked, else the last one read.
    int Line() const { return m_line; }

private:
    KoToken Scan();
    static void Classify(KoToken& token);

    std::istream& m_in;
    int m_line = 1;
    eKoReaderStatus m_status = eKoReaderStatus::Ok;
    bool m_hasPeeked = false;
    KoToken m_peeked;
};
