// A value whose kind is known only at run time: nothing, a number, a text, a list of
// values, or a map from names to values, nested to any depth. No operation recurses, so
// that the depth is bounded by memory alone.
//
// The rules of sharing, conversion, comparison and merging: docs/support/variants.md.
// Not thread-safe: copies of a vector share it by a plain count.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <list>
#include <memory>
#include <string>
#include <vector>

struct CVariant;
struct FileInfo;
class MVariant;
class VARIANTVECTOR;
class VariantWalker;
template <typename T>
class VStringMap;
namespace zol::support {
class EntryFinder;
class VariantTextReader;
}  // namespace zol::support

/// What a value is; also the kind byte of the binary forms.
enum MVariantKind : std::uint32_t {
    MV_EMPTY = 0,
    MV_DOUBLE = 1,
    MV_STRING = 2,
    MV_INT = 3,
    MV_VECTOR = 4,
    MV_MAP = 5,
    MV_POINTER = 6,
    MV_INT64 = 7,
};

class MVariant {
public:
    /// The one value that const accessors give when nothing is found. Never written.
    static const MVariant& Empty();

    MVariant() noexcept = default;
    /// A fresh value of that kind: an empty text, vector or map, a number of 0. A kind
    /// that does not exist gives MV_EMPTY.
    explicit MVariant(MVariantKind kind);
    /// A text and a map are copied in full; a vector is shared until one side changes it.
    MVariant(const MVariant& other);
    MVariant(MVariant&& other) noexcept : kind_(other.kind_), payload_(other.payload_) {
        other.kind_ = MV_EMPTY;
        other.payload_ = 0;
    }
    /// A copy of all of it; null gives an empty value.
    explicit MVariant(const CVariant* source);
    /// MV_INT where the number fits into 32 bits, else MV_INT64.
    MVariant(std::int64_t number) noexcept;
    template <std::integral T>
    requires(sizeof(T) <= sizeof(std::int64_t)) MVariant(T number)
    noexcept : MVariant(static_cast<std::int64_t>(number)) {}
    MVariant(double number) noexcept;
    MVariant(std::string text);
    /// Null gives an empty text.
    MVariant(const char* text);
    /// The value in a file: `form` 0 the text form, 1 the binary one, any other the
    /// binary one with the sealed rule. Empty where the file can't be read.
    MVariant(const char* name, int form);
    /// A word that is no number to us.
    static MVariant Pointer(std::uint64_t word) noexcept { return OfWord(MV_POINTER, word); }
    /// A value of exactly this kind with these 64 bits; of MV_INT only the low half
    /// counts. Empty for a kind that has content of its own, or does not exist.
    static MVariant OfWord(MVariantKind kind, std::uint64_t word) noexcept;
    ~MVariant() { Clear(); }

    /// What was there before is released when the new value stands, so that a part of a
    /// value may be assigned to the whole.
    MVariant& operator=(const MVariant& other);
    MVariant& operator=(MVariant&& other) noexcept;
    MVariant& operator=(double number) noexcept;
    /// By the rule of the constructor.
    MVariant& operator=(std::int64_t number) noexcept;
    template <std::integral T>
    requires(sizeof(T) <= sizeof(std::int64_t)) MVariant& operator=(T number) noexcept {
        return *this = static_cast<std::int64_t>(number);
    }
    MVariant& operator=(const CVariant* source);
    void swap(MVariant& other) noexcept;

    void Clear() noexcept {
        if (Owns()) {
            Release();
        }
        kind_ = MV_EMPTY;
        payload_ = 0;
    }
    /// A code that is no kind counts as MV_EMPTY.
    MVariantKind Kind() const noexcept {
        return kind_ <= MV_INT64 ? static_cast<MVariantKind>(kind_) : MV_EMPTY;
    }
    bool IsDefined() const noexcept { return Kind() != MV_EMPTY; }
    /// Elements of a vector, entries of a map, else 0.
    int Size() const;

    double AsDouble() const;
    std::int32_t AsInt() const;
    std::int64_t AsInt64() const;
    /// `argument`: decimals of a double (6 when negative), or the byte between the
    /// elements of a vector (a blank when -1).
    std::string AsString(int argument = -1) const;
    /// AsString() in a buffer of the process, good until the next call.
    const char* AsCString() const;

    /// What stands behind the value, without a copy and good until it changes: the text,
    /// the vector, the map; null when it is of another kind.
    const std::string* Text() const noexcept;
    const VARIANTVECTOR* Vector() const noexcept;
    const VStringMap<MVariant>* Map() const noexcept;
    /// The 64 bits of the payload, read by the kind; of no use for the three above.
    std::uint64_t Word() const noexcept { return payload_; }

    /// Makes this a vector that has element `index`. The reference is good until the
    /// vector grows or changes hands. A negative index is told through err_Print, and what
    /// is written to the reference is lost. Throws std::bad_alloc.
    MVariant& operator[](int index);
    /// Makes this a map that has `key`. The reference is good until the entry goes.
    /// Throws std::bad_alloc.
    MVariant& operator[](const char* key);
    MVariant& operator[](const std::string& key) { return (*this)[key.c_str()]; }
    /// A negative index is told through err_Print.
    const MVariant& At(int index) const;
    const MVariant& Get(const char* key) const;
    const MVariant& Get(const std::string& key) const { return Get(key.c_str()); }
    bool HasKey(const char* key) const;
    bool HasKey(const std::string& key) const { return HasKey(key.c_str()); }
    void RemoveKey(const char* key);
    void RemoveKey(const std::string& key) { RemoveKey(key.c_str()); }
    /// Makes this a vector and puts a copy of `value` at `index`, moving later elements
    /// up. Past the end the value goes to the end, and empty elements behind it, up to
    /// `index`. Gives element `index`. Throws std::bad_alloc.
    MVariant& InsertAt(int index, const MVariant& value);
    void RemoveAt(int index) { RemoveAt(index, 1); }
    /// A count below 0, or one that reaches past the end, means all up to the end. Nothing
    /// happens unless this is a vector that has element `index`.
    void RemoveAt(int index, int count);
    /// In the order of the table, which is no sort order.
    std::list<std::string> Keys() const;
    /// By bytes, or without regard to ASCII case and then by bytes.
    std::vector<std::string> SortedKeys(bool ignore_case) const;

    /// Whether both are of one kind and hold the same: doubles to within `tolerance`,
    /// texts and keys on wish without regard to ASCII case.
    bool Equals(const MVariant& other, double tolerance, bool ignore_case,
                bool ignore_key_case) const;
    /// Equals with a tolerance of 1e-06 and regard to case.
    bool operator==(const MVariant& other) const;
    bool operator!=(const MVariant& other) const { return !(*this == other); }
    /// Adds, appends or merges by the kinds of both sides, and gives a copy of the result.
    MVariant operator+=(const MVariant& right);

    /// A depth-first walk of this value and all in it.
    VariantWalker Begin();
    VariantWalker End();

    // The text form: docs/formats/variant-text.md.
    /// Reads the first value of a file into this one. False when the file does not open,
    /// which leaves both alone, and on a fault, which leaves this empty and is told in
    /// `errors` under "message", "explain", "line", "number" and "type".
    bool ReadText(const char* path, MVariant& errors);
    /// The same from a stream, of which nothing behind the value is taken; `fault` is the
    /// number of the fault, 0 for none.
    bool ParseText(std::istream& stream, int& fault, MVariant& errors);
    /// False when the file can't be created or written. The indentation of nested values
    /// makes the text grow with the square of their depth.
    bool WriteText(const char* path) const;

    // The binary forms: docs/formats/variant-binary.md.
    /// Bytes of the record; 0 for a value that needs more than 2^31 - 1, and so has none.
    std::uint32_t BinarySize() const;
    /// The record, of just so many bytes; null for a value that has none.
    std::unique_ptr<unsigned char[]> ToBinary() const;
    /// Takes the length in the record for the size of the memory. Null, and a record that
    /// does not hold together, give an empty value.
    void FromBinary(const void* record);
    /// The same of a record in `size` bytes, beyond which nothing is read: a record that
    /// claims more gives an empty value.
    void FromBinary(const void* record, std::size_t size);
    /// Reads a file in the clear or under the first cipher, whose last block is filled up
    /// with zeros where the file breaks off in it; `info`, which may be null, receives the
    /// header. False, with the value as it was, when the file does not open,
    /// has no header of version 1 or nothing behind it. True also for a record that does
    /// not hold together, which gives an empty value.
    bool ReadBinary(const char* path, FileInfo* info);
    /// The same with the second cipher. What is enciphered and no multiple of 16 bytes
    /// gives an empty value.
    bool ReadBinarySealed(const char* path, FileInfo* info);
    /// Writes a file under the first cipher. Of `info`, which may be null, the other two
    /// texts go into the header, and "EMVAR" is stored as the type. True when the header
    /// was written. A value that has no record gives false and leaves the file alone.
    bool WriteSealed(const char* path, FileInfo* info) const;
    /// Reads a value of the user's store: docs/support/registry.md. False, with the value
    /// as it was, without one of binary type.
    bool ReadRegistry(const char* root, const char* subkey, const char* name);
    /// Stores a value whose record is below 10240 bytes. False for others and when it
    /// can't be stored; what was there before then stays.
    bool WriteRegistry(const char* root, const char* subkey, const char* name) const;

private:
    friend class VariantWalker;
    friend class zol::support::EntryFinder;
    friend class zol::support::VariantTextReader;

    bool Owns() const noexcept {
        return kind_ == MV_STRING || kind_ == MV_VECTOR || kind_ == MV_MAP;
    }
    void Release() noexcept;
    /// Nothing is released: only for a value that owns nothing.
    void Take(MVariantKind kind, std::uint64_t payload) noexcept;
    /// Changes the payload and not the kind; what owns something is emptied first.
    void SetWord(std::uint64_t word) noexcept;
    /// The vector that only this value has, made where there is none.
    VARIANTVECTOR& OwnVector();
    VStringMap<MVariant>& OwnMap();

    void Add(const MVariant& right);
    void AddToDouble(const MVariant& right);
    void AddToText(const MVariant& right);
    void AddToInteger(const MVariant& right);
    void AddToVector(const MVariant& right);

    std::uint32_t kind_ = MV_EMPTY;
    std::uint64_t payload_ = 0;
};
