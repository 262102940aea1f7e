// A byte buffer with a length, an instance count and text forms of its contents; the root of the tools'
// classes.
#pragma once

#include <cstdint>

namespace RVK {

/// What `data` points to while there are no bytes. One address in the whole process, never freed or written
/// to.
inline constexpr char nullText[] = "(null*)";

/// Texts that operations return lie in `temp`, which all instances share: a returned pointer is valid until
/// the next text operation of any instance. One thread at a time. Nothing frees `data` when an instance goes:
/// the buffer stays allocated and is entered into the list of kept buffers.
class CData {
public:
    CData();
    virtual ~CData();
    CData(const CData&) = delete;
    CData& operator=(const CData&) = delete;

    virtual const char* ClassName() const;
    /// One less than the number of instances that are alive.
    virtual int ClassCount() const;
    /// Bytes in use.
    virtual int Length() const;
    virtual bool Empty() const;
    /// The allocation that the bytes in use take as a text.
    virtual int DataSize() const;
    /// The object's own size in bytes.
    virtual int ObjectSize() const;
    /// The contents as text; here `Hex5()`.
    virtual const char* String() const;

    // The bytes in upper-case hexadecimal, for 1A 2B and for no bytes. "(out of memory)" if there is no room.
    virtual const char* Hex2() const;     // "1A2B", "00"
    virtual const char* ColorRGB() const; // "#1A2B", "#000000"; meant for three bytes
    virtual const char* Hex3() const;     // "1A 2B", "00"
    virtual const char* Hex4() const;     // "#1A #2B", "#00"
    virtual const char* Hex5() const;     // "0x1A 0x2B", "0x00"
    /// Builds an element around `String()`, and returns its closing tag alone; a fixed element for no bytes.
    virtual const char* XML(int indent) const;

    /// Changes nothing, by design: buffers that callers mean to drop stay.
    void Clear();

    /// Zero-filled memory from the C allocator; absent if either argument is 0 or there is no room.
    static void* CAlloc(unsigned long number, unsigned long size);
    /// The allocation for a text of n bytes: a multiple of 4 above n; 0 for n below 1, and for an n so large
    /// that the size has no room in an int.
    static int Padding(int n);
    /// The length of a zero-ended text, 0 for an absent one.
    static int StrLen(const char* text);

    const char* classname = "CData";
    char* data; // from the C allocator, or `nullText`
    std::int32_t length = 0;

    inline static std::int32_t count = -1; // so that it is 0 with one instance alive
    inline static char* temp = nullptr;
    inline static char32_t* wtemp = nullptr;
    inline static char* err = nullptr;

protected:
    /// True if `data` holds an allocation.
    bool ownsData() const;
    /// `nullText` as the type of `data`; nothing writes through it.
    static char* unsetData();
    /// Frees the last text and makes room for `size` bytes, zero-filled, as the new one; absent if there is
    /// no room.
    static char* newTemp(std::int64_t size);
    /// Makes a finished buffer the shared text, which may begin anywhere within it, and frees the last one.
    static const char* adoptTemp(char* buffer, char* text);
    /// `Padding` of a size that may exceed an int; 0 if so.
    static int paddingOf(std::int64_t n);

private:
    /// Each byte as `prefix`, two digits and a blank if `blank`; the last blank gives way to the ending zero.
    const char* hexText(const char* prefix, bool blank) const;

    inline static char* tempBase_ =
        nullptr; // the allocation that `temp` lies in: XML points behind its start
};

} // namespace RVK
