// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "elf_symbols.h"

#include <elf.h>
#include <string.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace orvane::test {

namespace {

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

}  // namespace

std::vector<ElfSymbol> ReadDynamicSymbols(const std::filesystem::path& library) {
  const ElfFile file(library);
  const Elf64_Shdr section = file.Section(SHT_DYNSYM);
  if (section.sh_type == SHT_NULL) {
    throw std::runtime_error(library.string() + " has no dynamic symbols");
  }
  const Elf64_Shdr texts = file.TextsOf(section);

  std::vector<ElfSymbol> symbols;
  for (size_t i = 0; i < section.sh_size / sizeof(Elf64_Sym); ++i) {
    const auto entry = file.At<Elf64_Sym>(section.sh_offset + i * sizeof(Elf64_Sym));
    if (ELF64_ST_BIND(entry.st_info) == STB_LOCAL) {
      continue;  // some machines' linkers list sections
    }
    ElfSymbol symbol;
    symbol.name = file.Text(texts, entry.st_name);
    symbol.defined = entry.st_shndx != SHN_UNDEF;
    symbol.weak = ELF64_ST_BIND(entry.st_info) == STB_WEAK;
    symbols.push_back(symbol);
  }
  return symbols;
}

}  // namespace orvane::test
