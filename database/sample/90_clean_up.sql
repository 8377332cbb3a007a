-- SPDX-License-Identifier: MIT
/* Only the catalog's own tables stay. */
drop procedure W_SPLIT;
drop table W_EDITION;
drop table W_COVERAGE;
drop table W_BOOK;
drop table W_FAMILY;
drop table W_DETAIL;
drop table W_HEADING;
drop table W_MATERIAL;
drop table W_MACHINE;
drop table W_RESOURCE;
commit;
