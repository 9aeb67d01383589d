-- params: @svhid int,@godownid int
-- Brings the godown's good stock into line with a total count: each stock row of an item and
-- shipment that the entry counted holds the count, every other row of the godown holds zero.
-- Bad stock is not touched. Each change is written to loiTotalVerificationChange before it is
-- made, so that spReverseGodownTotalStockVerification undoes exactly this procedure's work.
--
-- A total count runs to a whole godown (100,000 lines and more). Every stock row that may
-- change is gathered once, into a table of this connection, with what it holds and what it
-- is to hold: the counted ones from the lines summed by item and shipment, the rest of the
-- godown that holds any stock with zero. The statements after that read this table alone,
-- and only rows whose stock changes are written.

CREATE TEMP TABLE IF NOT EXISTS sv_counted (
    item INT NOT NULL,
    shipment INT NOT NULL,
    counted NOT NULL,
    location INT,
    cost FLOAT,
    stockrow INT,       -- rowid in moigodownstock; null for a shipment the godown lacks
    oldstock NUMERIC,
    PRIMARY KEY (item, shipment)
) WITHOUT ROWID;

DELETE FROM temp.sv_counted;

INSERT INTO temp.sv_counted (item, shipment, counted, location, cost, stockrow, oldstock)
SELECT c.item, c.shipment, c.counted, c.location, c.cost, gs.rowid, gs.gsStock
FROM (SELECT d.svdItemID AS item, d.svdShipmentID AS shipment,
             round(sum(ifnull(d.svdVerifiedStock, 0)), 3) AS counted,
             min(d.svdLocationid) AS location, max(d.svdcostprice) AS cost
      FROM loiStockVerificationDetail d
      WHERE d.svdid = @svhid AND d.svdGodownID = @godownid
        AND d.svdItemID IS NOT NULL AND d.svdShipmentID IS NOT NULL
      GROUP BY d.svdItemID, d.svdShipmentID) c
LEFT JOIN moigodownstock gs
       ON gs.gsGodownId = @godownid AND gs.gsItemId = c.item AND gs.gsShipmentId = c.shipment;

INSERT INTO temp.sv_counted (item, shipment, counted, location, cost, stockrow, oldstock)
SELECT gs.gsItemId, gs.gsShipmentId, 0, NULL, NULL, gs.rowid, gs.gsStock
FROM moigodownstock gs
WHERE gs.gsGodownId = @godownid AND gs.gsStock <> 0
  AND NOT EXISTS (SELECT 1 FROM temp.sv_counted c
                  WHERE c.item = gs.gsItemId AND c.shipment = gs.gsShipmentId);

-- Counted shipments that the godown holds no row for get one, at the line's location.
INSERT INTO loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId,
                                        tvcCreated, tvcOldStock, tvcNewStock)
SELECT @godownid, @svhid, c.item, c.shipment, 1, 0, c.counted
FROM temp.sv_counted c
WHERE c.stockrow IS NULL;

INSERT INTO moigodownstock (gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock,
                            gsBadStock, gsItemCost)
SELECT @godownid, c.item, c.shipment, c.location, c.counted, 0, c.cost
FROM temp.sv_counted c
WHERE c.stockrow IS NULL;

INSERT INTO loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId,
                                        tvcCreated, tvcOldStock, tvcNewStock)
SELECT @godownid, @svhid, c.item, c.shipment, 0, c.oldstock, c.counted
FROM temp.sv_counted c
WHERE c.stockrow IS NOT NULL AND c.oldstock <> c.counted;

UPDATE moigodownstock
SET gsStock = c.counted
FROM temp.sv_counted c
WHERE moigodownstock.rowid = c.stockrow AND c.oldstock <> c.counted;

DELETE FROM temp.sv_counted;
