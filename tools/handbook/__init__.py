"""The manual: from the pages in docs/manual to HTML, a project for a compiled help file, and what is
wrong with them."""
