#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace morvelle {

/// A tree of keys under HKEY_CURRENT_USER, to be written as the registry editor of Windows exports
/// one (version 5.00). Texts are Windows-1252 but where UTF-16 is said.
class RegExport {
 public:
  /// A key; its values are written in the order in which they are given. An empty name is the key's
  /// default value.
  class Key {
   public:
    /// A text with a line break is given as bytes, the one form that every reader takes.
    Key& Text(std::string_view name, std::string_view text);
    Key& Text(std::string_view name, const std::u16string& text);
    /// A text with variables between "%".
    Key& Expand(std::string_view name, std::string_view text);
    Key& Dword(std::string_view name, std::uint32_t number);
    Key& Binary(std::string_view name, std::string_view bytes);
    /// Bytes of another registry type, given by its code.
    Key& Typed(std::string_view name, unsigned type, std::string_view bytes);

   private:
    friend class RegExport;
    void Hex(std::u16string line, std::string_view bytes);

    std::u16string name_;
    std::u16string lines_;
    /// By name in lower case: the order in which the registry lists them.
    std::map<std::string, Key> subkeys_;
  };

  RegExport() { top_.name_ = u"HKEY_CURRENT_USER"; }

  /// The key of this path, made with its parents where it is missing.
  Key& At(std::string_view path);

  /// The whole file: UTF-16LE with its mark, lines ended by CR LF.
  [[nodiscard]] std::string File() const;

 private:
  static void Write(const Key& key, const std::u16string& path, std::u16string& text);

  Key top_;
};

}  // namespace morvelle
