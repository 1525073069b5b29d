#include "tools/validate/shown_symbols.h"

#include <stdio.h>

#include <cstdint>
#include <cstring>

#ifndef __APPLE__
#include <elf.h>
#endif

#include "tools/validate/mach_o.h"
#include "tools/validate/tree.h"

#ifdef __APPLE__

bool shownSymbols(const std::string& path, std::set<std::string>& names, std::string& why) {
    std::string word = "'";
    for (const char letter : path)
        word += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    FILE* const nm = popen(("nm -gUj " + word + "' 2>/dev/null").c_str(), "r");
    char name[1024];
    while (nm && fscanf(nm, "%1023s", name) == 1) names.insert(*name == '_' ? name + 1 : name);
    if (nm && pclose(nm) == 0) return true;
    why = "the program nm, which tells a library's symbols, does not run here";
    return false;
}

int bitsOf(const std::string& path) {
    const MachOSizes sizes = machOSizes(tree::read(path));
    const bool hasOwn = sizeof(void*) == 8 ? sizes.has64 : sizes.has32;
    if (hasOwn) return sizeof(void*) * 8;
    if (sizes.has64) return 64;
    return sizes.has32 ? 32 : 0;
}

std::string whyNotLoadable(const std::string& path) {
    switch (machOKind(tree::read(path), sizeof(void*) * 8)) {
        case MachOKind::Library:
            return "";
        case MachOKind::Object:
            return "is an object file: link it to a library first";
        case MachOKind::Program:
            return "is a program, no library";
        case MachOKind::Other:
            break;
    }
    return "is no library";
}

#else

namespace {

// A record in the file; false where it is not whole there.
template <class Record>
bool recordAt(const std::string& file, std::uint64_t offset, Record& record) {
    if (offset > file.size() || file.size() - offset < sizeof record) return false;
    std::memcpy(&record, file.data() + offset, sizeof record);
    return true;
}

template <class Header, class Section, class Symbol>
bool collect(const std::string& file, std::set<std::string>& names) {
    Header header;
    if (!recordAt(file, 0, header)) return false;
    for (std::uint64_t i = 0; i < header.e_shnum; ++i) {
        Section table, texts;
        if (!recordAt(file, header.e_shoff + i * sizeof table, table)) return false;
        if (table.sh_type != SHT_DYNSYM) continue;
        if (!recordAt(file, header.e_shoff + table.sh_link * sizeof texts, texts)) return false;
        for (std::uint64_t at = 0; at < table.sh_size; at += sizeof(Symbol)) {
            Symbol symbol;
            if (!recordAt(file, table.sh_offset + at, symbol)) return false;
            const bool isShown = symbol.st_shndx != SHN_UNDEF && symbol.st_info >> 4 != STB_LOCAL;
            const std::uint64_t name = texts.sh_offset + symbol.st_name;
            if (isShown && name < file.size()) names.insert(file.c_str() + name);
        }
        return true;
    }
    return false;
}

}  // namespace

bool shownSymbols(const std::string& path, std::set<std::string>& names, std::string& why) {
    const std::string file = tree::read(path);
    if (bitsOf(path) == 64 && collect<Elf64_Ehdr, Elf64_Shdr, Elf64_Sym>(file, names)) return true;
    if (bitsOf(path) == 32 && collect<Elf32_Ehdr, Elf32_Shdr, Elf32_Sym>(file, names)) return true;
    why = "the file has no table of the symbols that it shows";
    return false;
}

int bitsOf(const std::string& path) {
    const std::string file = tree::read(path);
    if (file.size() <= EI_CLASS || file.compare(0, SELFMAG, ELFMAG) != 0) return 0;
    return file[EI_CLASS] == ELFCLASS64 ? 64 : 32;
}

namespace {

#if UINTPTR_MAX > 0xFFFFFFFF
using Header = Elf64_Ehdr;
using Section = Elf64_Shdr;
using Entry = Elf64_Dyn;
#else
using Header = Elf32_Ehdr;
using Section = Elf32_Shdr;
using Entry = Elf32_Dyn;
#endif

// A program that can lie anywhere has the type of a library, and says in its flags what it is.
bool isProgram(const std::string& file, const Header& header) {
    for (std::uint64_t i = 0; i < header.e_shnum; ++i) {
        Section section;
        if (!recordAt(file, header.e_shoff + i * sizeof section, section)) return false;
        if (section.sh_type != SHT_DYNAMIC) continue;
        Entry entry;
        for (std::uint64_t at = 0;
             at < section.sh_size && recordAt(file, section.sh_offset + at, entry);
             at += sizeof entry) {
            if (entry.d_tag == DT_FLAGS_1 && (entry.d_un.d_val & DF_1_PIE)) return true;
        }
    }
    return false;
}

}  // namespace

std::string whyNotLoadable(const std::string& path) {
    const std::string file = tree::read(path);
    Header header, own;
    if (!recordAt(file, 0, header)) return "is no library";
    if (recordAt(tree::read("/proc/self/exe"), 0, own) && header.e_machine != own.e_machine)
        return "is built for another processor than this one";
    if (header.e_type == ET_REL) return "is an object file: link it to a library first";
    if (header.e_type == ET_EXEC || isProgram(file, header)) return "is a program, no library";
    return header.e_type == ET_DYN ? "" : "is no library";
}

#endif
