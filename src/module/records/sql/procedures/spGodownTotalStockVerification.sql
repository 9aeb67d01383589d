-- params: @svhid int,@godownid int
-- Brings the godown's good stock into line with a total count: each stock row of an item and
-- shipment that the entry counted holds the count, every other row of the godown holds zero.
-- Bad stock is not touched. Each change is written to loiTotalVerificationChange before it is
-- made, so that spReverseGodownTotalStockVerification undoes exactly this procedure's work.
--
-- A total count runs to a whole godown (100,000 lines and more): the lines are summed by item
-- and shipment once, into a table of this connection, and every later statement seeks in it;
-- only rows whose stock changes are written.

CREATE TEMP TABLE IF NOT EXISTS sv_counted (
    item INT NOT NULL,
    shipment INT NOT NULL,
    counted NOT NULL,
    location INT,
    cost FLOAT,
    PRIMARY KEY (item, shipment)
) WITHOUT ROWID;

DELETE FROM temp.sv_counted;

INSERT INTO temp.sv_counted (item, shipment, counted, location, cost)
SELECT d.svdItemID, d.svdShipmentID, round(sum(ifnull(d.svdVerifiedStock, 0)), 3),
       min(d.svdLocationid), max(d.svdcostprice)
FROM loiStockVerificationDetail d
WHERE d.svdid = @svhid AND d.svdGodownID = @godownid
  AND d.svdItemID IS NOT NULL AND d.svdShipmentID IS NOT NULL
GROUP BY d.svdItemID, d.svdShipmentID;

-- Counted shipments that the godown holds no row for get one, at the line's location.
INSERT INTO loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId,
                                        tvcCreated, tvcOldStock, tvcNewStock)
SELECT @godownid, @svhid, c.item, c.shipment, 1, 0, c.counted
FROM temp.sv_counted c
WHERE NOT EXISTS (SELECT 1 FROM moigodownstock gs
                  WHERE gs.gsGodownId = @godownid AND gs.gsItemId = c.item
                    AND gs.gsShipmentId = c.shipment);

INSERT INTO moigodownstock (gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock,
                            gsBadStock, gsItemCost)
SELECT @godownid, c.item, c.shipment, c.location, c.counted, 0, c.cost
FROM temp.sv_counted c
WHERE NOT EXISTS (SELECT 1 FROM moigodownstock gs
                  WHERE gs.gsGodownId = @godownid AND gs.gsItemId = c.item
                    AND gs.gsShipmentId = c.shipment);

INSERT INTO loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId,
                                        tvcCreated, tvcOldStock, tvcNewStock)
SELECT @godownid, @svhid, gs.gsItemId, gs.gsShipmentId, 0, gs.gsStock, ifnull(c.counted, 0)
FROM moigodownstock gs
LEFT JOIN temp.sv_counted c ON c.item = gs.gsItemId AND c.shipment = gs.gsShipmentId
WHERE gs.gsGodownId = @godownid AND gs.gsStock <> ifnull(c.counted, 0);

UPDATE moigodownstock
SET gsStock = c.counted
FROM temp.sv_counted c
WHERE gsGodownId = @godownid AND gsItemId = c.item AND gsShipmentId = c.shipment
  AND gsStock <> c.counted;

UPDATE moigodownstock
SET gsStock = 0
WHERE gsGodownId = @godownid AND gsStock <> 0
  AND NOT EXISTS (SELECT 1 FROM temp.sv_counted c
                  WHERE c.item = gsItemId AND c.shipment = gsShipmentId);

DELETE FROM temp.sv_counted;
