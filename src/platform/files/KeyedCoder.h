// Objects that refer to each other as a property list: the platform's keyed coding.
#pragma once

#include "platform/core/Ref.h"
#include "platform/files/PropertyList.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Writes objects by key. An object type has `void encodeWithCoder(KeyedArchiver&) const`. Each object is
/// written once, however many refer to it, so that circles end.
class KeyedArchiver {
public:
    /// The archive: "$top" with the number of the root object, "$objects" with one dictionary per object.
    template <class T>
    static PropertyListDictionary archive(const Ref<T>& root) {
        KeyedArchiver archiver;
        const std::int64_t top = archiver.numberOf(root);
        return {{"$top", top}, {"$objects", std::move(archiver.objects_)}};
    }

    void encode(PropertyList value, const std::string& forKey) { current_.set(forKey, std::move(value)); }
    /// An absent object leaves the key out.
    template <class T>
    void encodeObject(const Ref<T>& object, const std::string& forKey) {
        if (object) {
            encode(numberOf(object), forKey);
        }
    }
    template <class T>
    void encodeObjects(const std::vector<Ref<T>>& objects, const std::string& forKey) {
        PropertyListArray numbers;
        for (const Ref<T>& object : objects) {
            numbers.emplace_back(numberOf(object));
        }
        encode(std::move(numbers), forKey);
    }

private:
    template <class T>
    std::int64_t numberOf(const Ref<T>& object) {
        const auto [place, isNew] =
            numbers_.try_emplace(object.get(), static_cast<std::int64_t>(objects_.size()));
        const std::int64_t number = place->second;
        if (isNew) {
            objects_.emplace_back(PropertyListDictionary{});
            PropertyListDictionary outer = std::exchange(current_, {});
            object->encodeWithCoder(*this);
            objects_[static_cast<std::size_t>(number)] = std::exchange(current_, std::move(outer));
        }
        return number;
    }

    std::map<const void*, std::int64_t> numbers_;
    PropertyListArray objects_;
    PropertyListDictionary current_;
};

/// Reads what `KeyedArchiver` wrote. An object type has a constructor without arguments and
/// `void decodeWithCoder(KeyedUnarchiver&)`. What is missing or of another kind is absent.
class KeyedUnarchiver {
public:
    /// Absent if the archive is none.
    template <class T>
    static Ref<T> unarchive(const PropertyListDictionary& archive) {
        const PropertyList* objects = archive.find("$objects");
        const PropertyList* top = archive.find("$top");
        if (objects == nullptr || objects->asArray() == nullptr || top == nullptr) {
            return nullptr;
        }
        KeyedUnarchiver unarchiver(*objects->asArray());
        return unarchiver.object<T>(top->asInteger());
    }

    const PropertyList* decode(const std::string& key) const {
        return current_ == nullptr ? nullptr : current_->find(key);
    }
    template <class T>
    Ref<T> decodeObject(const std::string& key) {
        const PropertyList* number = decode(key);
        return number == nullptr ? nullptr : object<T>(number->asInteger());
    }
    template <class T>
    std::vector<Ref<T>> decodeObjects(const std::string& key) {
        std::vector<Ref<T>> result;
        const PropertyList* numbers = decode(key);
        if (numbers != nullptr && numbers->asArray() != nullptr) {
            for (const PropertyList& number : *numbers->asArray()) {
                if (Ref<T> found = object<T>(number.asInteger())) {
                    result.push_back(std::move(found));
                }
            }
        }
        return result;
    }

private:
    explicit KeyedUnarchiver(const PropertyListArray& objects) : objects_(objects), made_(objects.size()) {}

    struct Made {
        Ref<void> object;
        const void* type = nullptr;
    };
    /// One address per type: an archive can't pass an object of one type for another.
    template <class T>
    inline static char typeMark = 0;

    template <class T>
    Ref<T> object(std::optional<std::int64_t> number) {
        if (!number || *number < 0 || static_cast<std::size_t>(*number) >= objects_.size()) {
            return nullptr;
        }
        const auto index = static_cast<std::size_t>(*number);
        if (made_[index].object) {
            return made_[index].type == &typeMark<T> ? std::static_pointer_cast<T>(made_[index].object)
                                                     : nullptr;
        }
        const PropertyListDictionary* fields = objects_[index].asDictionary();
        if (fields == nullptr) {
            return nullptr;
        }
        auto result = makeRef<T>();
        made_[index] = {result, &typeMark<T>}; // before its fields, which may refer back to it
        const PropertyListDictionary* outer = std::exchange(current_, fields);
        result->decodeWithCoder(*this);
        current_ = outer;
        return result;
    }

    const PropertyListArray& objects_;
    std::vector<Made> made_;
    const PropertyListDictionary* current_ = nullptr;
};

} // namespace platform
