"""One module per family added after the first four: each defines FAMILIES,
a list of members.Family values, in the order the header shows them."""
