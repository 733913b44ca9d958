// The dbcs_ family under each of five code pages, held to its model.
#include <standin.h>

#include "frame/entry.h"
#include "fuzz_input.h"
#include "published_tables.h"
#include "string_model.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static unsigned active = 1252;
    fuzzing::Input input(data, size);
    constexpr unsigned kPages = sizeof testing_support::kCodePages / sizeof *testing_support::kCodePages;
    const auto page = static_cast<unsigned>(testing_support::kCodePages[input.byte() % kPages]);
    if (page != active) {
        fuzzing::require(standin::setCodePages(page, page == 1252 ? 437 : page));
        tamrix::constructStatics();
        active = page;
    }
    const std::string other = input.text(24);
    const std::string text = input.rest().substr(0, 40);
    const tamrix::LeadByteTable leads = testing_support::leadBytesOf(static_cast<int>(page));
    for (const char byte : text) fuzzing::require((isdbchar(byte) != 0) == leads.leads(byte));
    fuzzing::require(!testing_support::StringModel(leads, text).disagreement(other));
    return 0;
}
