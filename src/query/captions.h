#pragma once

namespace ts4 {

class TStrings;

/// Rebuilds `dest` as the `defaults` table with every non-empty value that
/// `source` gives for one of its names laid over it: the defaults' sections
/// in their order, each followed by one empty line, the defaults' names in
/// their order; lines of `source` with names the defaults lack are dropped.
/// Sections are first renamed in `source` itself ("[PanelTitles]" becomes
/// "[Query Panel]", "[RFETitles]" becomes "[Result Fields Editor]"). When
/// the defaults have no sections, both lists are merged as plain name=value
/// lines. The three lists may be the same objects.
void LoadTitlesFromStrings(const TStrings& defaults, TStrings& dest, TStrings& source);

}  // namespace ts4
