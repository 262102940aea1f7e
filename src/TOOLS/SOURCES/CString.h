// The tools' string: an eight-bit text with a rich set of operators.
#pragma once

#include "TOOLS/SOURCES/CData.h"

namespace RVK {

class CStringList;

/// A text of `length` bytes with an ending zero behind them; zero bytes within it count as any other, except
/// where an operation works on zero-ended text by its nature (comparisons, numbers, printing). A text
/// argument may be part of the string itself; an absent one changes nothing and equals nothing. If there is
/// no room, the string stays as it was. Operators that give a new string build it in `tempstr`, which all
/// share: it is valid until the next of them. One thread at a time. An assignment drops the old buffer, and
/// the destructor the last one, without freeing it: see `keepUntilExit`.
class CString : public CData {
public:
    CString();
    CString(char* text); // NOLINT(google-explicit-constructor): a text is a string
    CString(const char* text) : CString(const_cast<char*>(text)) {} // NOLINT(google-explicit-constructor)
    CString(const CString& other);
    ~CString() override;

    int ClassCount() const override;
    const char* String() const override;
    /// The text as an element, `indent` tabs deep; for no text the element that `CData` gives.
    const char* XML(int indent) const override;

    // NOLINTNEXTLINE(misc-unconventional-assign-operator): the interface takes a plain reference, virtually
    virtual CString& operator=(CString& other);
    virtual CString& operator=(char* text);
    virtual CString& operator=(const char* text);
    virtual CString& operator=(int number);
    virtual CString& operator=(double number); // six digits behind the point
    /// The byte at i, or a zero that belongs to no string.
    virtual char& operator[](int i);

    // By the bytes up to the first zero; a string without text compares as "(null*)".
    virtual bool operator==(char* text);
    virtual bool operator==(CString& other);
    virtual bool operator!=(CString& other);
    virtual bool operator!=(char* text);
    virtual bool operator<(CString& other);
    virtual bool operator>(CString& other);
    virtual bool operator<=(CString& other);
    virtual bool operator>=(CString& other);

    virtual CString& operator+=(CString& other);
    virtual CString& operator+=(char* text);
    virtual CString& operator+=(char character);
    virtual CString& operator+=(int number);
    virtual CString& operator+=(double number);
    /// Removes all occurrences, by `Replace`.
    virtual CString& operator-=(char* text);
    /// Drops the last n bytes if there are more than n; otherwise changes nothing.
    virtual CString& operator-=(int n);
    virtual CString& operator+(CString& other);
    virtual CString& operator+(char* text);
    virtual CString& operator+(int number);
    virtual CString& operator+(double number);
    /// The text n times; the string itself for n below 2.
    virtual CString& operator*(int n);
    /// The text without its last n bytes, all of it if there are no more than n; the string itself for n
    /// below 1.
    virtual CString& operator-(int n);
    /// `tempstr` without the text, whatever it holds; the string itself for an absent text.
    virtual CString& operator-(char* text);
    /// Prints the text n times to the standard output.
    virtual CString& operator>>(int n);
    /// Replaces the contents with a file's bytes and returns the length. Says on the standard output what
    /// failed, and then keeps the contents.
    virtual int operator<<(char* path);
    /// Writes the contents to a file and returns the number of bytes written. Says on the standard output
    /// what failed.
    virtual int operator>>(char* path);

    /// The byte as a signed value, 0 out of range.
    virtual int At(int i) const;
    virtual int First() const;
    virtual int Last() const;
    /// The position of the first match at or behind `from`, or -1.
    virtual int Find(char* text, int from) const;
    /// Puts `replacement` (absent: nothing) in place of the first match at or behind `from`, or of all of
    /// them, one call for each. Returns whether anything was replaced; a text can't be replaced by one of no
    /// bytes.
    virtual bool Replace(char* search, char* replacement, int from, bool all);
    /// Puts the text ahead of byte i, which must exist.
    virtual CString& Insert(int i, char* text);
    /// n bytes from i, cut at the end, in `temp`; absent for none.
    virtual const char* SubStr(int i, int n) const;
    // Remove blank, tab, carriage return and line end.
    virtual CString& Trim();
    virtual CString& TrimLeft();
    virtual CString& TrimRight();
    /// Fills the list with the pieces between separators, from byte `start`, empty ones left out; at most
    /// `limit` if that is 1 or more. A start of 0 clears the list. Returns the list's size, or -1 if
    /// something is absent.
    virtual int Split(char* separator, CStringList* list, int limit, int start);
    // Per byte, by the locale's character classes.
    virtual CString& Uppercase();
    virtual CString& Lowercase();
    virtual CString& Revertcase();
    // The number at the text's start, 0 if there is none. The decimal sign is the point in every locale.
    virtual int Integer() const;
    virtual int HexToInt() const;
    virtual float Float() const;
    virtual double Double() const;
    /// True if there is any text, "0" included.
    virtual bool ToBool() const;
    /// One 32-bit unit for each byte, zero-ended, in `wtemp`; absent for no text.
    virtual const char32_t* Unicode() const;
    virtual void Decode();
    /// Replaces the text by its own `Hex2()`.
    virtual void Encode();
    /// True if no byte up to the first zero has its top bit set.
    virtual bool IsASCII() const;
    /// True if all bytes are letters or digits and the first is no digit.
    virtual bool IsKeyword() const;
    virtual const char* c_str() const;

    const char* Data() const;
    /// Frees the text; for n above 0 makes n zero bytes, if there is room.
    void reassign(int n);

    // The same for literals and results of other operations.
    CString& operator=(const CString& other) { return *this = const_cast<CString&>(other); }
    bool operator==(const char* text) { return *this == const_cast<char*>(text); }
    bool operator!=(const char* text) { return *this != const_cast<char*>(text); }
    CString& operator+=(const char* text) { return *this += const_cast<char*>(text); }
    CString& operator-=(const char* text) { return *this -= const_cast<char*>(text); }
    CString& operator+(const char* text) { return *this + const_cast<char*>(text); }
    CString& operator-(const char* text) { return *this - const_cast<char*>(text); }
    int operator<<(const char* path) { return *this << const_cast<char*>(path); }
    int operator>>(const char* path) { return *this >> const_cast<char*>(path); }
    int Find(const char* text, int from) const { return Find(const_cast<char*>(text), from); }
    bool Replace(const char* search, const char* replacement, int from, bool all) {
        return Replace(const_cast<char*>(search), const_cast<char*>(replacement), from, all);
    }
    bool Replace(const char* search, char* replacement, int from, bool all) {
        return Replace(const_cast<char*>(search), replacement, from, all);
    }
    bool Replace(char* search, const char* replacement, int from, bool all) {
        return Replace(search, const_cast<char*>(replacement), from, all);
    }
    CString& Insert(int i, const char* text) { return Insert(i, const_cast<char*>(text)); }
    int Split(const char* separator, CStringList* list, int limit, int start) {
        return Split(const_cast<char*>(separator), list, limit, start);
    }

    inline static std::int32_t count = -1;
    inline static char nirvana = '\0';
    static CString tempstr;

private:
    void init();
    /// Copies bytes into a new buffer and drops the old one, which stays allocated.
    CString& assign(const char* bytes, std::int64_t size);
    /// Makes the text ahead, `middle` and the text behind the new contents: what all growing operations come
    /// to.
    bool splice(int ahead, const char* middle, std::int64_t size, int behind);
    CString& append(const char* bytes, std::int64_t size);
    /// Text and bytes in `tempstr`, which either may be.
    CString& sum(const char* bytes, std::int64_t size);
    /// Frees the old buffer and takes this one over.
    void adopt(char* buffer, int size);
    bool hasText() const { return data != nullptr && length > 0; }
};

} // namespace RVK
