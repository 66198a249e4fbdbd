# Who holds the rights, as LICENSE says; the packages and the command repeat it.
file(STRINGS LICENSE petal_copyright REGEX "^Copyright " LIMIT_COUNT 1)
string(REGEX REPLACE "^Copyright \\(c\\) [0-9]+ " "" petal_authors "${petal_copyright}")
