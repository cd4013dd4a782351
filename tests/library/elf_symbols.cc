// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "elf_symbols.h"

#include <elf.h>
#include <string.h>

#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

namespace orvane::test {

namespace {

// Above it, an index says that the name is hidden from those who ask for no version.
constexpr Elf64_Half kVersionMask = 0x7fff;

class ElfFile {
 public:
  explicit ElfFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
    const auto header = bytes_.size() < sizeof(Elf64_Ehdr) ? Elf64_Ehdr{} : At<Elf64_Ehdr>(0);
    if (memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64) {
      throw std::runtime_error(path.string() + " is no 64-bit ELF file");
    }
    for (size_t i = 0; i < header.e_shnum; ++i) {
      sections_.push_back(At<Elf64_Shdr>(header.e_shoff + i * header.e_shentsize));
    }
  }

  // All zero when there is none.
  Elf64_Shdr Section(Elf64_Word type) const {
    for (const Elf64_Shdr& section : sections_) {
      if (section.sh_type == type) {
        return section;
      }
    }
    return {};
  }
  // The section of the texts that another one points to.
  Elf64_Shdr TextsOf(const Elf64_Shdr& section) const { return sections_.at(section.sh_link); }

  template <class T>
  T At(size_t offset) const {
    if (offset > bytes_.size() || bytes_.size() - offset < sizeof(T)) {
      throw std::runtime_error("the ELF file is cut");
    }
    T value;
    memcpy(&value, bytes_.data() + offset, sizeof(T));
    return value;
  }
  std::string Text(const Elf64_Shdr& texts, size_t offset) const {
    return bytes_.c_str() + texts.sh_offset + offset;
  }

 private:
  std::string bytes_;
  std::vector<Elf64_Shdr> sections_;
};

// The names of the versions that the library needs, by the index that symbols have.
std::map<Elf64_Half, std::string> ReadNeededVersions(const ElfFile& file) {
  std::map<Elf64_Half, std::string> versions;
  const Elf64_Shdr section = file.Section(SHT_GNU_verneed);
  if (section.sh_type == SHT_NULL) {
    return versions;
  }
  const Elf64_Shdr texts = file.TextsOf(section);
  size_t library_at = section.sh_offset;
  for (Elf64_Word library = 0; library < section.sh_info; ++library) {
    const auto need = file.At<Elf64_Verneed>(library_at);
    size_t version_at = library_at + need.vn_aux;
    for (Elf64_Half i = 0; i < need.vn_cnt; ++i) {
      const auto version = file.At<Elf64_Vernaux>(version_at);
      versions[version.vna_other & kVersionMask] = file.Text(texts, version.vna_name);
      version_at += version.vna_next;
    }
    library_at += need.vn_next;
  }
  return versions;
}

}  // namespace

std::vector<ElfSymbol> ReadDynamicSymbols(const std::filesystem::path& library) {
  const ElfFile file(library);
  const Elf64_Shdr section = file.Section(SHT_DYNSYM);
  if (section.sh_type == SHT_NULL) {
    throw std::runtime_error(library.string() + " has no dynamic symbols");
  }
  const Elf64_Shdr texts = file.TextsOf(section);
  const Elf64_Shdr indexes = file.Section(SHT_GNU_versym);
  const std::map<Elf64_Half, std::string> versions = ReadNeededVersions(file);

  std::vector<ElfSymbol> symbols;
  // The first entry stands for no symbol.
  for (size_t i = 1; i < section.sh_size / sizeof(Elf64_Sym); ++i) {
    const auto entry = file.At<Elf64_Sym>(section.sh_offset + i * sizeof(Elf64_Sym));
    ElfSymbol symbol;
    symbol.name = file.Text(texts, entry.st_name);
    symbol.defined = entry.st_shndx != SHN_UNDEF;
    symbol.weak = ELF64_ST_BIND(entry.st_info) == STB_WEAK;
    if (indexes.sh_type != SHT_NULL) {
      const auto index = file.At<Elf64_Half>(indexes.sh_offset + i * sizeof(Elf64_Half));
      const auto version = versions.find(index & kVersionMask);
      symbol.version = version == versions.end() ? "" : version->second;
    }
    symbols.push_back(symbol);
  }
  return symbols;
}

}  // namespace orvane::test
