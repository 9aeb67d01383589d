-- Tables of the inventory database that the stock verification module reads and writes, on a
-- PostgreSQL server. Text columns are of the domain sv_text: blank-padded text under the
-- collation sv_ci, which ignores letter case and is not byte for byte, so that they compare,
-- group and sort as SQL Server's varchar does, ignoring letter case and trailing blanks, while
-- a value read back keeps its blanks. Each keeps the width of SQL Server's varchar through a
-- check named COLUMN_length, which the data layer reads as the width and whose refusal it
-- reports as SQL Server's truncation (blanks past the width at the end are let through, as SQL
-- Server drops them). Dates are TIMESTAMP(3) (SQL Server's datetime keeps milliseconds); flags
-- that SQL Server keeps as bit are the domain sv_bit. Keys are those of the database file.
-- Column order matters where the module writes by position (the ledgers).

CREATE COLLATION sv_ci (PROVIDER = icu, LOCALE = 'und-u-ks-level2', DETERMINISTIC = false);

CREATE DOMAIN sv_text AS bpchar COLLATE sv_ci;

-- Text joined to text keeps the blanks at the end of each side, as SQL Server's + does; the
-- server's own || casts blank-padded text to text, which drops them.
CREATE FUNCTION sv_concat(a bpchar, b bpchar) RETURNS bpchar LANGUAGE sql IMMUTABLE STRICT
    AS $$ SELECT (textin(bpcharout(a)) || textin(bpcharout(b)))::bpchar $$;
CREATE OPERATOR || (LEFTARG = bpchar, RIGHTARG = bpchar, FUNCTION = sv_concat);
CREATE FUNCTION sv_concat(a bpchar, b text) RETURNS bpchar LANGUAGE sql IMMUTABLE STRICT
    AS $$ SELECT (textin(bpcharout(a)) || b)::bpchar $$;
CREATE OPERATOR || (LEFTARG = bpchar, RIGHTARG = text, FUNCTION = sv_concat);
CREATE FUNCTION sv_concat(a text, b bpchar) RETURNS bpchar LANGUAGE sql IMMUTABLE STRICT
    AS $$ SELECT (a || textin(bpcharout(b)))::bpchar $$;
CREATE OPERATOR || (LEFTARG = text, RIGHTARG = bpchar, FUNCTION = sv_concat);

CREATE DOMAIN sv_bit AS SMALLINT CHECK (VALUE IN (0, 1));

-- Company and organisation ------------------------------------------------------------------

CREATE TABLE aCurrencyMaster (
    CurrencyID INT NOT NULL PRIMARY KEY,
    CurrencyCode sv_text NOT NULL
        CONSTRAINT currencycode_length CHECK (length(rtrim(CurrencyCode, ' ')) <= 10),
    CurrencyName sv_text NOT NULL
        CONSTRAINT currencyname_length CHECK (length(rtrim(CurrencyName, ' ')) <= 50),
    Decimals SMALLINT NOT NULL DEFAULT 2
);

CREATE TABLE aCompanyMaster (
    CompanyID INT NOT NULL PRIMARY KEY,
    name sv_text NOT NULL
        CONSTRAINT name_length CHECK (length(rtrim(name, ' ')) <= 100),
    Address1 sv_text
        CONSTRAINT address1_length CHECK (length(rtrim(Address1, ' ')) <= 100),
    Address2 sv_text
        CONSTRAINT address2_length CHECK (length(rtrim(Address2, ' ')) <= 100),
    Address3 sv_text
        CONSTRAINT address3_length CHECK (length(rtrim(Address3, ' ')) <= 100),
    CurrencyID INT NOT NULL
);

CREATE TABLE aDepartmentMaster (
    DepartmentID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    Departmentname sv_text NOT NULL
        CONSTRAINT departmentname_length CHECK (length(rtrim(Departmentname, ' ')) <= 100),
    depcurrencyid INT NOT NULL
);

CREATE TABLE acountrymaster (
    countryid INT NOT NULL PRIMARY KEY,
    CountryName sv_text NOT NULL
        CONSTRAINT countryname_length CHECK (length(rtrim(CountryName, ' ')) <= 50)
);

CREATE TABLE acity (
    cityid INT NOT NULL PRIMARY KEY,
    CityName sv_text NOT NULL
        CONSTRAINT cityname_length CHECK (length(rtrim(CityName, ' ')) <= 50),
    countryid INT NOT NULL
);

CREATE TABLE aGodown (
    GodownID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    DepartmentId INT NOT NULL,
    GodownName sv_text NOT NULL
        CONSTRAINT godownname_length CHECK (length(rtrim(GodownName, ' ')) <= 100),
    Address sv_text
        CONSTRAINT address_length CHECK (length(rtrim(Address, ' ')) <= 250),
    GodownTelephoneNo sv_text
        CONSTRAINT godowntelephoneno_length CHECK (length(rtrim(GodownTelephoneNo, ' ')) <= 30),
    GodownFaxNo sv_text
        CONSTRAINT godownfaxno_length CHECK (length(rtrim(GodownFaxNo, ' ')) <= 30),
    countryid INT,
    cityid INT
);

-- Shops are the other kind of stock location; stock transfers run between godowns and shops.
CREATE TABLE aShop (
    ShopId INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    ShopName sv_text NOT NULL
        CONSTRAINT shopname_length CHECK (length(rtrim(ShopName, ' ')) <= 100)
);

-- Bins within a godown. A location belongs to one godown: every join gives both columns.
CREATE TABLE loiLocation (
    lLocationId INT NOT NULL,
    lLocationName sv_text NOT NULL
        CONSTRAINT llocationname_length CHECK (length(rtrim(lLocationName, ' ')) <= 50),
    lGodownId INT NOT NULL,
    PRIMARY KEY (lGodownId, lLocationId)
);

CREATE TABLE aFinancialYear (
    FinancialId INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    FromDate TIMESTAMP(3) NOT NULL,
    ToDate TIMESTAMP(3) NOT NULL,
    CurFinancialYear sv_bit NOT NULL DEFAULT 0
);

-- Document number prefix per interface, financial year and godown.
CREATE TABLE aPrefix (
    InterfaceID INT NOT NULL,
    FinancialId INT NOT NULL,
    godownid INT NOT NULL,
    Prefix sv_text
        CONSTRAINT prefix_length CHECK (length(rtrim(Prefix, ' ')) <= 10),
    PRIMARY KEY (InterfaceID, FinancialId, godownid)
);

-- Days closed for posting: nothing dated on or before a godown's close date may change.
CREATE TABLE aGodownClosing (
    GodownID INT NOT NULL,
    CloseDate TIMESTAMP(3) NOT NULL,
    ClosedBy INT,
    ClosedOn TIMESTAMP(3),
    PRIMARY KEY (GodownID, CloseDate)
);

-- Users and settings ------------------------------------------------------------------------

-- One row for each godown a user may work at.
CREATE TABLE lousers (
    userid INT NOT NULL,
    GodownID INT NOT NULL,
    username sv_text NOT NULL
        CONSTRAINT username_length CHECK (length(rtrim(username, ' ')) <= 50),
    Designation sv_text
        CONSTRAINT designation_length CHECK (length(rtrim(Designation, ' ')) <= 50),
    Active sv_bit NOT NULL DEFAULT 1,
    PRIMARY KEY (userid, GodownID)
);

-- Who a Unix login is: the terminal session takes its clerk from the login
-- that runs it, through this table the administrator keeps. A login with two
-- rows is a mistake the session refuses to guess about, so the key allows it.
CREATE TABLE svUserLogin (
    login sv_text NOT NULL
        CONSTRAINT login_length CHECK (length(rtrim(login, ' ')) <= 64),
    UserID INT NOT NULL,
    PRIMARY KEY (login, UserID)
);

-- Function letters of a user in one interface: N new, E edit, D delete, P print.
CREATE TABLE louserrights (
    userid INT NOT NULL,
    interfaceid INT NOT NULL,
    companyid INT NOT NULL,
    functionrights sv_text
        CONSTRAINT functionrights_length CHECK (length(rtrim(functionrights, ' ')) <= 20),
    PRIMARY KEY (userid, interfaceid, companyid)
);

CREATE TABLE LOiSettings (
    GodownID INT NOT NULL PRIMARY KEY,
    sNoBackDays INT NOT NULL DEFAULT 0,
    defaultfetch sv_text
        CONSTRAINT defaultfetch_length CHECK (length(rtrim(defaultfetch, ' ')) <= 30)
);

CREATE TABLE aPackageSettings (
    CompanyID INT NOT NULL PRIMARY KEY,
    InventoryID INT,
    stocktransfercontrolacc INT,
    IntegerQuantity sv_bit NOT NULL DEFAULT 0,
    Alias sv_bit NOT NULL DEFAULT 0,
    AllowItemCodeDuplication sv_bit NOT NULL DEFAULT 0
);

CREATE TABLE aAlias (
    AliasId INT NOT NULL,
    CompanyId INT NOT NULL,
    Alias sv_text
        CONSTRAINT alias_length CHECK (length(rtrim(Alias, ' ')) <= 50),
    PRIMARY KEY (CompanyId, AliasId)
);

CREATE TABLE aSettings (
    CompanyID INT NOT NULL PRIMARY KEY,
    CashGroupID INT
);

-- Column layouts of list views, by transaction, list and module.
CREATE TABLE alistviewheader (
    lvwid INT NOT NULL PRIMARY KEY,
    lvwtransname sv_text NOT NULL
        CONSTRAINT lvwtransname_length CHECK (length(rtrim(lvwtransname, ' ')) <= 50),
    lvwname sv_text NOT NULL
        CONSTRAINT lvwname_length CHECK (length(rtrim(lvwname, ' ')) <= 50),
    lvwmodulename sv_text NOT NULL
        CONSTRAINT lvwmodulename_length CHECK (length(rtrim(lvwmodulename, ' ')) <= 50)
);

CREATE TABLE alistviewdetails (
    lvwdid INT NOT NULL,
    lvwcolid INT NOT NULL,
    lvwdcolwidth INT NOT NULL,
    lvwdcolalign SMALLINT NOT NULL DEFAULT 0,
    PRIMARY KEY (lvwdid, lvwcolid)
);

-- Column headers of register grids; rows of one table come in the order of its columns.
CREATE TABLE atables (
    tableid INT NOT NULL PRIMARY KEY,
    tablename sv_text NOT NULL
        CONSTRAINT tablename_length CHECK (length(rtrim(tablename, ' ')) <= 100)
);

CREATE TABLE atablecolumns (
    tableid INT NOT NULL,
    columnorder SMALLINT NOT NULL,
    columnheader sv_text NOT NULL
        CONSTRAINT columnheader_length CHECK (length(rtrim(columnheader, ' ')) <= 50),
    columnname sv_text NOT NULL
        CONSTRAINT columnname_length CHECK (length(rtrim(columnname, ' ')) <= 50),
    PRIMARY KEY (tableid, columnorder)
);

CREATE TABLE ashopprintmessages (
    shopid INT NOT NULL,
    transtype sv_text NOT NULL
        CONSTRAINT transtype_length CHECK (length(rtrim(transtype, ' ')) <= 10),
    lineno SMALLINT NOT NULL,
    message sv_text
        CONSTRAINT message_length CHECK (length(rtrim(message, ' ')) <= 100),
    PRIMARY KEY (shopid, transtype, lineno)
);

-- Parties and currency ----------------------------------------------------------------------

CREATE TABLE avendormaster (
    vendorID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    VendorName sv_text NOT NULL
        CONSTRAINT vendorname_length CHECK (length(rtrim(VendorName, ' ')) <= 100),
    CurrencyID INT NOT NULL
);

CREATE TABLE acustomermaster (
    customerID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    CustomerName sv_text NOT NULL
        CONSTRAINT customername_length CHECK (length(rtrim(CustomerName, ' ')) <= 100),
    CurrencyID INT NOT NULL
);

CREATE TABLE aaccountmaster (
    accountID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    AccountName sv_text NOT NULL
        CONSTRAINT accountname_length CHECK (length(rtrim(AccountName, ' ')) <= 100),
    CurrencyID INT NOT NULL
);

CREATE TABLE ExchangeRate (
    CompanyID INT NOT NULL,
    ExchangeID INT NOT NULL,
    ExchangeDate TIMESTAMP(3) NOT NULL,
    PRIMARY KEY (CompanyID, ExchangeID)
);

CREATE TABLE ExchangeRateDetail (
    CompanyID INT NOT NULL,
    ExchangeID INT NOT NULL,
    CurrencyID INT NOT NULL,
    SellingRate DOUBLE PRECISION NOT NULL,
    BuyingRate DOUBLE PRECISION NOT NULL,
    PRIMARY KEY (CompanyID, ExchangeID, CurrencyID)
);

-- Items and stock ---------------------------------------------------------------------------

CREATE TABLE aitemcategory (
    ItemCategoryID INT NOT NULL PRIMARY KEY,
    categorynamedescription sv_text NOT NULL
        CONSTRAINT categorynamedescription_length
            CHECK (length(rtrim(categorynamedescription, ' ')) <= 50)
);

CREATE TABLE aUnit (
    UnitId INT NOT NULL PRIMARY KEY,
    UnitCode sv_text NOT NULL
        CONSTRAINT unitcode_length CHECK (length(rtrim(UnitCode, ' ')) <= 10),
    UnitName sv_text NOT NULL
        CONSTRAINT unitname_length CHECK (length(rtrim(UnitName, ' ')) <= 50)
);

CREATE TABLE aItem (
    ItemId INT NOT NULL PRIMARY KEY,
    itemcode sv_text NOT NULL
        CONSTRAINT itemcode_length CHECK (length(rtrim(itemcode, ' ')) <= 20),
    ItemName sv_text NOT NULL
        CONSTRAINT itemname_length CHECK (length(rtrim(ItemName, ' ')) <= 100),
    PackSize sv_text
        CONSTRAINT packsize_length CHECK (length(rtrim(PackSize, ' ')) <= 50),
    ItemPrintName sv_text
        CONSTRAINT itemprintname_length CHECK (length(rtrim(ItemPrintName, ' ')) <= 40),
    ItemCategoryID INT NOT NULL,
    UnitsId INT NOT NULL,
    itemrate DOUBLE PRECISION,
    part_code sv_text
        CONSTRAINT part_code_length CHECK (length(rtrim(part_code, ' ')) <= 30),
    Active sv_bit NOT NULL DEFAULT 1,
    ExpiryNoOfDays INT
);
CREATE INDEX ixItemCode ON aItem (itemcode);

-- Barcodes printed on an item's packings; a scan of one counts one piece.
CREATE TABLE aitempackingdetail (
    itemid INT NOT NULL,
    packingbarcode sv_text NOT NULL
        CONSTRAINT packingbarcode_length CHECK (length(rtrim(packingbarcode, ' ')) <= 30),
    PackingTypeId INT,
    PackingQty NUMERIC(18,3) NOT NULL DEFAULT 1,
    Active sv_bit NOT NULL DEFAULT 1
);
CREATE INDEX ixPackingBarcode ON aitempackingdetail (packingbarcode);
CREATE INDEX ixPackingItem ON aitempackingdetail (itemid);

-- The items a godown carries.
CREATE TABLE agodowndetail (
    godownid INT NOT NULL,
    itemid INT NOT NULL,
    ReorderLevel NUMERIC(18,3),
    PRIMARY KEY (godownid, itemid)
);
CREATE INDEX ixGodownDetailItem ON agodowndetail (itemid, godownid);

CREATE TABLE aShipment (
    sShipmentId INT NOT NULL PRIMARY KEY,
    sShipmentno sv_text NOT NULL
        CONSTRAINT sshipmentno_length CHECK (length(rtrim(sShipmentno, ' ')) <= 30),
    sShipmentDate TIMESTAMP(3) NOT NULL,
    sVendorId INT
);

-- The book stock of a godown: one row for each item and shipment, standing at one location.
CREATE TABLE moigodownstock (
    gsGodownId INT NOT NULL,
    gsItemId INT NOT NULL,
    gsShipmentId INT NOT NULL,
    gsLocationId INT,
    gsStock NUMERIC(18,3) NOT NULL DEFAULT 0,
    gsBadStock NUMERIC(18,3) NOT NULL DEFAULT 0,
    gsItemCost DOUBLE PRECISION,
    PRIMARY KEY (gsGodownId, gsItemId, gsShipmentId)
);

-- Stock transfers between godowns and shops; until received, the quantities are under way.
CREATE TABLE loiStockTransferHeader (
    sthId INT NOT NULL PRIMARY KEY,
    sthNo sv_text NOT NULL
        CONSTRAINT sthno_length CHECK (length(rtrim(sthNo, ' ')) <= 20),
    sthDate TIMESTAMP(3) NOT NULL,
    sthFromLocationType sv_text NOT NULL
        CONSTRAINT sthfromlocationtype_length CHECK (length(rtrim(sthFromLocationType, ' ')) <= 1),
    sthFromLocationId INT NOT NULL,
    sthToLocationType sv_text NOT NULL
        CONSTRAINT sthtolocationtype_length CHECK (length(rtrim(sthToLocationType, ' ')) <= 1),
    sthToLocationId INT NOT NULL,
    sthStatus sv_text NOT NULL DEFAULT 'D'
        CONSTRAINT sthstatus_length CHECK (length(rtrim(sthStatus, ' ')) <= 1),
    sthCancelled sv_bit NOT NULL DEFAULT 0
);

CREATE TABLE loiStockTransferDetail (
    stdId INT NOT NULL,
    stdLineNo SMALLINT NOT NULL,
    stdItemId INT NOT NULL,
    stdQty NUMERIC(18,3) NOT NULL,
    PRIMARY KEY (stdId, stdLineNo)
);

-- Verification entries ----------------------------------------------------------------------

-- svhid numbers the entries of one godown, so the key is the pair. The posted and cancelled
-- flags are small integers, not bits: the register shows any other value than 0 and 1 as
-- null, and a bit column could not hold one.
CREATE TABLE loiStockVerificationHeader (
    svhid INT NOT NULL,
    svhno sv_text
        CONSTRAINT svhno_length CHECK (length(rtrim(svhno, ' ')) <= 30),
    svhdate TIMESTAMP(3),
    svhremarks sv_text
        CONSTRAINT svhremarks_length CHECK (length(rtrim(svhremarks, ' ')) <= 250),
    svhverificationby sv_text
        CONSTRAINT svhverificationby_length CHECK (length(rtrim(svhverificationby, ' ')) <= 250),
    svhGodownid INT NOT NULL,
    svhdepartmentid INT,
    svhconexrate DOUBLE PRECISION,
    svhdepexrate DOUBLE PRECISION,
    svhexchangerates sv_text
        CONSTRAINT svhexchangerates_length CHECK (length(rtrim(svhexchangerates, ' ')) <= 250),
    svhFutureVc sv_text
        CONSTRAINT svhfuturevc_length CHECK (length(rtrim(svhFutureVc, ' ')) <= 10),
    svhcreatedtime sv_text
        CONSTRAINT svhcreatedtime_length CHECK (length(rtrim(svhcreatedtime, ' ')) <= 8),
    updatetime TIMESTAMP(3),
    svhposted SMALLINT DEFAULT 0,
    svhcancelled SMALLINT DEFAULT 0,
    svhcancelledRemarks sv_text
        CONSTRAINT svhcancelledremarks_length
            CHECK (length(rtrim(svhcancelledRemarks, ' ')) <= 255),
    PRIMARY KEY (svhGodownid, svhid)
);

-- The lines of an entry share (svdid, svdGodownID); they have no key of their own.
CREATE TABLE loiStockVerificationDetail (
    svdid INT NOT NULL,
    svdGodownID INT NOT NULL,
    svdLocationid INT,
    svdShipmentID INT,
    svdItemID INT,
    svdAvailStock NUMERIC(18,3),
    svdVerifiedStock NUMERIC(18,3),
    svdavailbadstock NUMERIC(18,3),
    svdverifiedbadstock NUMERIC(18,3),
    svdcostprice DOUBLE PRECISION
);
CREATE INDEX ixVerificationDetail
    ON loiStockVerificationDetail (svdGodownID, svdid, svdItemID, svdShipmentID);

-- Location and expiry ledgers. The first eleven columns of each stand in this order, since
-- balancing rows are written by position.

CREATE TABLE loiLocationArrivalDetails (
    ladInterfaceId INT NOT NULL,
    ladGodownId INT NOT NULL,
    ladTransId INT NOT NULL,
    ladDetailId SMALLINT NOT NULL,
    ladLocationId INT NOT NULL,
    ladItemId INT NOT NULL,
    ladItemQty NUMERIC(18,3) NOT NULL,
    ladPackingTypeId INT,
    ladPakingQty NUMERIC(18,3),
    ladCancel SMALLINT NOT NULL DEFAULT 0,
    ladconfirmed SMALLINT NOT NULL DEFAULT 0,
    ladAdjustment SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX ixLocationArrivalItem ON loiLocationArrivalDetails (ladGodownId, ladItemId);
CREATE INDEX ixLocationArrivalDoc
    ON loiLocationArrivalDetails (ladInterfaceId, ladGodownId, ladTransId);

CREATE TABLE loiLocationIssueDetails (
    lidInterfaceId INT NOT NULL,
    lidGodownId INT NOT NULL,
    lidTransactionId INT NOT NULL,
    lidDetailId SMALLINT NOT NULL,
    lidLocationId INT NOT NULL,
    lidItemId INT NOT NULL,
    lidItemQty NUMERIC(18,3) NOT NULL,
    lidPackingTypeId INT,
    lidPakingQty NUMERIC(18,3),
    lidCancel SMALLINT NOT NULL DEFAULT 0,
    lidconfirmed SMALLINT NOT NULL DEFAULT 0,
    lidAdjustment SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX ixLocationIssueItem ON loiLocationIssueDetails (lidGodownId, lidItemId);
CREATE INDEX ixLocationIssueDoc
    ON loiLocationIssueDetails (lidInterfaceId, lidGodownId, lidTransactionId);

CREATE TABLE loiExpiryArrivalDetails (
    eadInterfaceId INT NOT NULL,
    eadGodownId INT NOT NULL,
    eadTransactionId INT NOT NULL,
    eaddetailid SMALLINT NOT NULL,
    eadexpirydate TIMESTAMP(3),
    eadItemId INT NOT NULL,
    eadItemQty NUMERIC(18,3) NOT NULL,
    eadPackingTypeId INT,
    eadPackingQty NUMERIC(18,3),
    eadCancel SMALLINT NOT NULL DEFAULT 0,
    eadAdjustment SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX ixExpiryArrivalItem ON loiExpiryArrivalDetails (eadGodownId, eadItemId);
CREATE INDEX ixExpiryArrivalDoc
    ON loiExpiryArrivalDetails (eadInterfaceId, eadGodownId, eadTransactionId);

CREATE TABLE loiExpiryIssueDetails (
    eidinterfaceId INT NOT NULL,
    eidGodownId INT NOT NULL,
    eidTransactionId INT NOT NULL,
    eidDetailId SMALLINT NOT NULL,
    eidExpiryDate TIMESTAMP(3),
    eidItemId INT NOT NULL,
    eidItemQty NUMERIC(18,3) NOT NULL,
    eidPackingTypeId INT,
    eidPackingQty NUMERIC(18,3),
    eidCancel SMALLINT NOT NULL DEFAULT 0,
    eidAdjustment SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX ixExpiryIssueItem ON loiExpiryIssueDetails (eidGodownId, eidItemId);
CREATE INDEX ixExpiryIssueDoc
    ON loiExpiryIssueDetails (eidinterfaceId, eidGodownId, eidTransactionId);

-- Stock procedures' own books -----------------------------------------------------------------

-- Stock rows that spupdateGodownVerification "F" had to create for an entry, so that "R"
-- removes them again when it leaves them empty.
CREATE TABLE loiVerificationNewStock (
    vnsGodownId INT NOT NULL,
    vnsSvhId INT NOT NULL,
    vnsItemId INT NOT NULL,
    vnsShipmentId INT NOT NULL,
    PRIMARY KEY (vnsGodownId, vnsSvhId, vnsItemId, vnsShipmentId)
);

-- Every good stock change made by spGodownTotalStockVerification, the only record from which
-- spReverseGodownTotalStockVerification undoes it.
CREATE TABLE loiTotalVerificationChange (
    tvcGodownId INT NOT NULL,
    tvcSvhId INT NOT NULL,
    tvcItemId INT NOT NULL,
    tvcShipmentId INT NOT NULL,
    tvcCreated sv_bit NOT NULL DEFAULT 0,
    tvcOldStock NUMERIC(18,3) NOT NULL,
    tvcNewStock NUMERIC(18,3) NOT NULL
);
-- By item and shipment as well: the reversal finds each stock row's change by seeking, not by
-- scanning the whole record of a count over a large godown.
CREATE INDEX ixTotalVerificationChange
    ON loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId);

-- Sibling services ----------------------------------------------------------------------------

-- Faults reported by any routine of the application (the fault desk).
CREATE TABLE aFaultLog (
    FaultId INT GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY,
    SourceName sv_text
        CONSTRAINT sourcename_length CHECK (length(rtrim(SourceName, ' ')) <= 100),
    UserName sv_text
        CONSTRAINT username_length CHECK (length(rtrim(UserName, ' ')) <= 50),
    RoutineName sv_text
        CONSTRAINT routinename_length CHECK (length(rtrim(RoutineName, ' ')) <= 100),
    ErrorNumber INT,
    ErrorSource sv_text
        CONSTRAINT errorsource_length CHECK (length(rtrim(ErrorSource, ' ')) <= 250),
    ErrorDescription sv_text
        CONSTRAINT errordescription_length CHECK (length(rtrim(ErrorDescription, ' ')) <= 1000),
    TransactionMode sv_text
        CONSTRAINT transactionmode_length CHECK (length(rtrim(TransactionMode, ' ')) <= 10),
    LoggedAt TIMESTAMP(3) NOT NULL
);

-- Who did what to which document, and when (the activity trail).
CREATE TABLE aActivityTrail (
    ActivityId INT GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY,
    CompanyID INT NOT NULL,
    GodownID INT NOT NULL,
    UserID INT NOT NULL,
    InterfaceID INT NOT NULL,
    TransKey sv_text
        CONSTRAINT transkey_length CHECK (length(rtrim(TransKey, ' ')) <= 50),
    TransNo sv_text
        CONSTRAINT transno_length CHECK (length(rtrim(TransNo, ' ')) <= 50),
    ActionType sv_text NOT NULL
        CONSTRAINT actiontype_length CHECK (length(rtrim(ActionType, ' ')) <= 1),
    LoggedTime TIMESTAMP(3),
    SavedTime TIMESTAMP(3) NOT NULL
);

-- Colours and font of the forms, per company (the screen palette).
CREATE TABLE aScreenPalette (
    CompanyID INT NOT NULL PRIMARY KEY,
    FormBackColor INT NOT NULL,
    FormForeColor INT NOT NULL,
    ControlBackColor INT NOT NULL,
    ControlForeColor INT NOT NULL,
    ButtonBackColor INT NOT NULL,
    GridBackColor INT NOT NULL,
    GridForeColor INT NOT NULL,
    FontName sv_text NOT NULL
        CONSTRAINT fontname_length CHECK (length(rtrim(FontName, ' ')) <= 50),
    FontSize SMALLINT NOT NULL
);

-- A user's own column widths for a grid (the grid column profiles).
CREATE TABLE aGridColumnProfile (
    UserID INT NOT NULL,
    CompanyID INT NOT NULL,
    GridName sv_text NOT NULL
        CONSTRAINT gridname_length CHECK (length(rtrim(GridName, ' ')) <= 100),
    ColumnIndex SMALLINT NOT NULL,
    ColumnWidth INT NOT NULL,
    PRIMARY KEY (UserID, CompanyID, GridName, ColumnIndex)
);
