#pragma once
// The text forms the comparison of records with read lines works on: letters and digits folded
// as names are compared (ConvTo7BitASCII), capitals and small letters alike, and the shapes an
// OCR reader mistakes for one another made one (1, l, I and i; 0 and O; rn and m). Each
// character keeps where it came from: which field of the record, or which read word and where
// in that word's text.
#include <string>
#include <vector>

namespace tv {

struct FoldedChar {
    char Ch = ' ';
    int Source = 0; // field number (1-based) or word index
    int From = 0;   // first byte of the source text it was folded from
    int To = 0;     // one past the last
};

// The folded letters and digits of text, spaces and marks left out; source labels them.
void AppendFolded(const std::string& text, int source, std::vector<FoldedChar>& out);

// The folded letters and digits of text as one string (for quick likeness of whole lines).
std::string Folded(const std::string& text);

// How alike two folded strings are, 0 (nothing shared) to 1 (the same pairs of characters).
double Likeness(const std::string& a, const std::string& b);

// The pairs of neighbouring characters of a folded string, sorted: compared many times, a
// string's pairs are made once.
std::vector<int> Pairs(const std::string& folded);
// Likeness of the strings whose pairs these are (a string of one character has no pairs and is
// like nothing).
double Likeness(const std::vector<int>& a, const std::vector<int>& b);

} // namespace tv
