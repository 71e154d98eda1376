// orvCore/system/inspection/orvAbstractAttribute.h
#pragma once

#include <cstddef>
#include <cstdint>

namespace orv
{

class BinaryStream;
class BinaryStreamCheck;
class DataItem;
class RTTI;
class XMLStream;

/// How an attribute's value goes on a binary stream: a run of bytes that any bits make valid (a number, a vector, a
/// quaternion, an identifier), a bool, one 32-bit word (an integer or a word value), a pointer to an inspectable
/// class, an inspectable object by value, or another form.
struct AttributeStreamShape
{
    /// The forms a walk can tell apart without the value's own code.
    enum Kind
    {
        OTHER,
        PLAIN,
        BOOL,
        WORD,
        POINTER,
        OBJECT
    };
    /// The form.
    Kind _kind = OTHER;
    /// Bytes of a PLAIN, BOOL or WORD value; 0 otherwise.
    size_t _bytes = 0;
    /// The class pointed to (POINTER) or read (OBJECT); null otherwise, or when it has no descriptor yet.
    const RTTI* _rtti = nullptr;
};

/// One inspectable member of a class, seen without its types: its name, its kind, the descriptors of its value
/// type and of its owner, and how it goes on and off the two streams. Owned by the owner's descriptor; immutable
/// after registration and readable from any thread.
class AbstractAttribute
{
public:
    /// How the value type reaches the attribute: by value, through a pointer or through a reference.
    struct AttributeType
    {
        enum Value : uint8_t
        {
            VALUE = 0,
            POINTER = 1,
            CONST_POINTER = 2,
            REFERENCE = 3,
            CONST_REFERENCE = 4,
            END = 5
        };
    };

    /// Kind VALUE until the form says otherwise; the name is stored normalised. Does not take ownership of either.
    AbstractAttribute(const char* name, const RTTI* ownerRTTI);
    /// Copies kind, name and owner.
    AbstractAttribute(const AbstractAttribute& other);
    /// Copies kind, name and owner.
    AbstractAttribute& operator=(const AbstractAttribute& other);
    virtual ~AbstractAttribute();

    /// The descriptor of the value type, in its form (T, const T&, T* or const T*).
    virtual const RTTI* getAttributeRTTI() const = 0;
    /// The descriptor of the class that declares the attribute.
    virtual const RTTI* getOwnerRTTI() const;
    /// Writes the attribute of object, an address of the owner class, on a binary stream, in its current pass.
    virtual void pack(BinaryStream& stream, const void* object) const = 0;
    /// Reads the attribute of object, an address of the owner class, from a binary stream, in its current pass.
    virtual void unpack(BinaryStream& stream, void* object) const = 0;
    /// Walks the attribute's bytes as unpack would read them, without an object; false once the check refused.
    virtual bool check(BinaryStreamCheck& check) const = 0;
    /// How the value goes on a binary stream, for walks of bytes that have no object to read into.
    virtual AttributeStreamShape getStreamShape() const = 0;
    /// Writes the attribute of object into item, the element made for it, in the XML stream's current pass.
    virtual void pack(XMLStream& stream, DataItem& item, const void* object) const = 0;
    /// Reads the attribute of object from item, in the XML stream's current pass.
    virtual void unpack(XMLStream& stream, const DataItem& item, void* object) const = 0;

    /// The normalised name: blanks dropped with the next letter raised, accents folded.
    const char* getName() const { return _name; }
    /// The kind set by the attribute's form.
    AttributeType::Value getAttributeType() const { return _attributeType; }

protected:
    /// Kind set by the form's constructor.
    AttributeType::Value _attributeType = AttributeType::VALUE;
    /// Normalised name, in the caller's text or the buffer of normalised names; not owned.
    const char* _name = nullptr;
    /// Descriptor of the declaring class; not owned.
    const RTTI* _ownerRTTI = nullptr;
};

} // namespace orv
