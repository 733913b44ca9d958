// The dbcs_ family under each of six code pages, held to its model.
#pragma once

#include <standin.h>

#include "frame/entry.h"
#include "properties/property.h"
#include "published_tables.h"
#include "string_model.h"

namespace properties {

inline void property(Input& input) {
    static unsigned active = 1252;
    constexpr unsigned kPages = sizeof testing_support::kCodePages / sizeof *testing_support::kCodePages;
    const auto page = static_cast<unsigned>(testing_support::kCodePages[input.byte() % kPages]);
    if (page != active) {
        require(standin::setCodePages(page, page == 1252 ? 437 : page), "setCodePages");
        tamrix::constructStatics();
        active = page;
    }
    const std::string other = input.text(24);
    const std::string text = input.rest().substr(0, 40);
    const tamrix::LeadByteTable leads = testing_support::leadBytesOf(static_cast<int>(page));
    for (const char byte : text) require((isdbchar(byte) != 0) == leads.leads(byte), "isdbchar");
    const char* const disagreement = testing_support::StringModel(leads, text).disagreement(other);
    require(!disagreement, disagreement ? disagreement : "");
}

}  // namespace properties
