namespace vetlo {

// What the built library says of itself to whoever looks into the file.
extern const char kLibraryText[];
const char kLibraryText[] = "Vetlo V3.20";

}  // namespace vetlo
