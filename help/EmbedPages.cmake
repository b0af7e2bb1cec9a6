# Writes a source file with the text of pages: OUT from the semicolon list PAGES, paths told from ROOT on.
string(CONCAT source "// Made from the pages below docs/ by help/EmbedPages.cmake.\n#include \"help/EmbeddedPages.h\"\n\n"
       "namespace Quillon {\n\nconst std::vector<ManualPage>& ManualPages() {\n"
       "    static const std::vector<ManualPage> pages{\n")
list(SORT PAGES)
foreach(page IN LISTS PAGES)
  file(RELATIVE_PATH path ${ROOT} ${page})
  file(READ ${page} text)
  string(APPEND source "        {\"${path}\", R\"page(${text})page\"},\n")
endforeach()
string(APPEND source "    };\n    return pages;\n}\n\n} // namespace Quillon\n")
file(WRITE ${OUT} "${source}")
